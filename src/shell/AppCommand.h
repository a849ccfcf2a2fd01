#pragma once

#include <QObject>

#include <functional>

namespace corvane {

/// A menu command: its label, shortcut and enabled state. Main thread only.
class AppCommand : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString id READ id CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString shortcut READ shortcut CONSTANT)
    Q_PROPERTY(bool enabled READ isEnabled NOTIFY enabledChanged)
    Q_PROPERTY(QString toolTip READ toolTip NOTIFY toolTipChanged)

  public:
    struct Text {
        QString id;
        QString label;
        QString shortcut; ///< in the syntax of `QKeySequence`; empty if the command has none
    };

    AppCommand(Text text, std::function<void()> action, QObject *parent);

    const QString &id() const { return m_text.id; }
    const QString &label() const { return m_text.label; }
    const QString &shortcut() const { return m_text.shortcut; }
    bool isEnabled() const { return m_isEnabled; }
    const QString &toolTip() const { return m_toolTip; }

    void setEnabled(bool enabled);
    void setToolTip(const QString &text);

    /// Runs the action. No-op while the command is disabled.
    Q_INVOKABLE void trigger() const;

  Q_SIGNALS:
    void enabledChanged();
    void toolTipChanged();

  private:
    Text m_text;
    std::function<void()> m_action;
    bool m_isEnabled = true;
    QString m_toolTip;
};

} // namespace corvane
