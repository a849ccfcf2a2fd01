#include "shell/UpdaterController.h"

#include "platform/Tasks.h"
#include "shell/UpdateFeed.h"

#include <QLoggingCategory>
#include <QPointer>

namespace corvane {

namespace {

Q_LOGGING_CATEGORY(updaterLog, "app.corvane.Corvane.Updater")

const auto kNoKey = QStringLiteral(
    "This build of Corvane can't check for updates, because it has no key to verify them with. Ask "
    "whoever provided it for the newest version.");

QString describeFailure(const QString &reason) {
    return QStringLiteral("The check for updates failed: %1. Your version stays as it is; you can "
                          "try again later.")
        .arg(reason);
}

QString describeResult(const AvailableVersion &available, const QString &ownVersion) {
    if (available.version <= QVersionNumber::fromString(ownVersion)) {
        return QStringLiteral("Corvane %1 is the newest version.").arg(ownVersion);
    }
    const QString text = QStringLiteral("Corvane %1 is available. You have %2.")
                             .arg(available.version.toString(), ownVersion);
    return available.page.isEmpty()
               ? text
               : QStringLiteral("%1 Get it from %2").arg(text, available.page.toString());
}

} // namespace

UpdateSettings UpdateSettings::builtIn() {
    return {.feed = QUrl(QStringLiteral(CORVANE_UPDATE_FEED_URL), QUrl::StrictMode),
            .publicKey = QByteArrayLiteral(CORVANE_UPDATE_PUBLIC_KEY),
            .version = QStringLiteral(CORVANE_VERSION)};
}

UpdaterController::UpdaterController(UpdateSettings settings, Clock &clock, QObject *parent)
    : QObject(parent), m_settings(std::move(settings)), m_clock(clock) {}

void UpdaterController::check() {
    if (m_isChecking) {
        return;
    }
    if (m_settings.publicKey.trimmed().isEmpty()) {
        qCCritical(updaterLog).noquote()
            << QStringLiteral("Refusing update check: SUPublicEDKey is blank in Info.plist. EdDSA "
                              "verification cannot function without the key.");
        setResultText(kNoKey);
        return;
    }
    detach(run());
}

QCoro::Task<> UpdaterController::run() {
    const QPointer self(this);
    setChecking(true);
    setResultText({});
    const UpdateSettings settings = m_settings;
    QString result;
    try {
        result =
            describeResult(co_await updateFeed::fetch(settings.feed, settings.publicKey, m_clock),
                           settings.version);
    } catch (const std::exception &error) {
        qCCritical(updaterLog).noquote()
            << QStringLiteral("Refusing update feed: %1.").arg(describe(error));
        result = describeFailure(describe(error));
    }
    if (self) {
        setChecking(false);
        setResultText(result);
    }
}

void UpdaterController::dismissResult() {
    setResultText({});
}

void UpdaterController::setChecking(bool checking) {
    if (std::exchange(m_isChecking, checking) != checking) {
        Q_EMIT canCheckChanged();
    }
}

void UpdaterController::setResultText(const QString &text) {
    if (std::exchange(m_resultText, text) != text) {
        Q_EMIT resultTextChanged();
    }
}

} // namespace corvane
