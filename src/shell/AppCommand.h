#pragma once

#include <QObject>
#include <QVariant>

#include <functional>

namespace corvane {

/// A menu command: its label, shortcuts and state. Main thread only.
class AppCommand : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString id READ id CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString shortcut READ shortcut CONSTANT)
    Q_PROPERTY(QVariantList shortcuts READ shortcuts CONSTANT)
    Q_PROPERTY(bool isApplicationWide READ isApplicationWide CONSTANT)
    Q_PROPERTY(bool isCheckable READ isCheckable CONSTANT)
    Q_PROPERTY(bool isChecked READ isChecked NOTIFY checkedChanged)
    Q_PROPERTY(bool enabled READ isEnabled NOTIFY enabledChanged)
    Q_PROPERTY(QString toolTip READ toolTip NOTIFY toolTipChanged)

  public:
    struct Text {
        QString id;
        QString label;
        /// In the syntax of `QKeySequence`. The menu shows the first. May be empty.
        QStringList shortcuts = {};
        bool isApplicationWide = false; ///< its shortcuts also work in the other windows
        bool isCheckable = false;
    };

    AppCommand(Text text, std::function<void()> action, QObject *parent);

    const QString &id() const { return m_text.id; }
    const QString &label() const { return m_text.label; }
    /// The shortcut that the menu shows; may be empty.
    QString shortcut() const { return m_text.shortcuts.value(0); }
    QVariantList shortcuts() const;
    bool isApplicationWide() const { return m_text.isApplicationWide; }
    bool isCheckable() const { return m_text.isCheckable; }
    bool isChecked() const { return m_isChecked; }
    bool isEnabled() const { return m_isEnabled; }
    const QString &toolTip() const { return m_toolTip; }

    void setEnabled(bool enabled);
    void setChecked(bool checked);
    void setToolTip(const QString &text);

    /// Runs the action. No-op while the command is disabled.
    Q_INVOKABLE void trigger() const;

  Q_SIGNALS:
    void enabledChanged();
    void checkedChanged();
    void toolTipChanged();

  private:
    Text m_text;
    std::function<void()> m_action;
    bool m_isEnabled = true;
    bool m_isChecked = false;
    QString m_toolTip;
};

} // namespace corvane
