#pragma once

#include "platform/Clock.h"

#include <QByteArray>
#include <QCoroTask>
#include <QObject>
#include <QUrl>

namespace corvane {

/// The update feed and its key, set by the distributor of the program.
struct UpdateSettings {
    QUrl feed;
    QByteArray publicKey; ///< base64; if empty, no check is made
    QString version;      ///< of this program

    /// The settings of this build.
    static UpdateSettings builtIn();
};

/// Checks for a newer version on request and announces it; never downloads or installs one. If a
/// check fails or cannot be verified, the result is the reason, which is logged too. Main thread
/// only.
class UpdaterController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString resultTitle READ resultTitle CONSTANT)
    Q_PROPERTY(QString resultText READ resultText NOTIFY resultTextChanged)

  public:
    explicit UpdaterController(UpdateSettings settings, Clock &clock = Clock::system(),
                               QObject *parent = nullptr);

    /// False while a check is in progress.
    bool canCheck() const { return !m_isChecking; }
    static QString resultTitle() { return QStringLiteral("Corvane updates"); }
    /// Result of the last check until it is dismissed; empty if there was none.
    const QString &resultText() const { return m_resultText; }

    /// Starts a check. No-op while one is in progress.
    void check();
    /// Clears `resultText`.
    Q_INVOKABLE void dismissResult();

  Q_SIGNALS:
    void canCheckChanged();
    void resultTextChanged();

  private:
    QCoro::Task<> run();
    void setChecking(bool checking);
    void setResultText(const QString &text);

    UpdateSettings m_settings;
    Clock &m_clock;
    bool m_isChecking = false;
    QString m_resultText;
};

} // namespace corvane
