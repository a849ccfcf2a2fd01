#include "shell/AppCommand.h"

namespace corvane {

AppCommand::AppCommand(Text text, std::function<void()> action, QObject *parent)
    : QObject(parent), m_text(std::move(text)), m_action(std::move(action)) {
    setObjectName(m_text.id);
}

QVariantList AppCommand::shortcuts() const {
    QVariantList values;
    for (const QString &shortcut : m_text.shortcuts) {
        values.append(shortcut);
    }
    return values;
}

void AppCommand::setEnabled(bool enabled) {
    if (std::exchange(m_isEnabled, enabled) != enabled) {
        Q_EMIT enabledChanged();
    }
}

void AppCommand::setChecked(bool checked) {
    if (std::exchange(m_isChecked, checked) != checked) {
        Q_EMIT checkedChanged();
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
