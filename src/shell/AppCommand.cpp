#include "shell/AppCommand.h"

namespace corvane {

AppCommand::AppCommand(Text text, std::function<void()> action, QObject *parent)
    : QObject(parent), m_text(std::move(text)), m_action(std::move(action)) {
    setObjectName(m_text.id);
}

void AppCommand::setEnabled(bool enabled) {
    if (std::exchange(m_isEnabled, enabled) != enabled) {
        Q_EMIT enabledChanged();
    }
}

void AppCommand::setToolTip(const QString &text) {
    if (std::exchange(m_toolTip, text) != text) {
        Q_EMIT toolTipChanged();
    }
}

void AppCommand::trigger() const {
    if (m_isEnabled) {
        m_action();
    }
}

} // namespace corvane
