#pragma once

#include "platform/Clock.h"

#include <QByteArray>
#include <QCoroTask>
#include <QObject>
#include <QUrl>

namespace corvane {

/// Where newer versions are told of, and by whom: settings of whoever delivers the program.
struct UpdateSettings {
    QUrl feed;
    QByteArray publicKey; ///< base64; without one no check is made
    QString version;      ///< of this program

    /// What this program was built with.
    static UpdateSettings builtIn();
};

/// Looks whether there is a newer version, when it is told to. It tells of it and does no more:
/// nothing is downloaded or installed. A check that could not be verified is refused, and that is
/// told in one line of the log. Main thread.
class UpdaterController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString resultTitle READ resultTitle CONSTANT)
    Q_PROPERTY(QString resultText READ resultText NOTIFY resultTextChanged)

  public:
    explicit UpdaterController(UpdateSettings settings, Clock &clock = Clock::system(),
                               QObject *parent = nullptr);

    /// False while a check runs.
    bool canCheck() const { return !m_isChecking; }
    static QString resultTitle() { return QStringLiteral("Corvane updates"); }
    /// What the last check found, until it was seen; empty where there was none or it was refused.
    const QString &resultText() const { return m_resultText; }

    /// Starts a check, unless one runs. What a feed may be is told in docs/file-formats.md.
    void check();
    /// The user has seen the result.
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
