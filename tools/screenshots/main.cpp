#include "ScreenPicture.h"

#include "kit/Fonts.h"
#include "platform/Failure.h"

#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QDir>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTextStream>

#include <clocale>

/// Draws every screen to a PNG, in memory, without a display. Exit status 1 if one couldn't be
/// drawn.
namespace {

using corvane::ScreenPicture;

/// Long enough for the slowest fade, and for what a screen brings about before its picture is
/// taken.
constexpr int fadeInMs = 400;
constexpr int longestWaitInMs = 180000;

void runEvents(int ms, const std::function<bool()> &enough) {
    const QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired() && !enough()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
}

bool take(const ScreenPicture &picture, const QDir &folder) {
    QQmlEngine engine;
    const std::unique_ptr<QObject> root = picture.make(engine);
    auto *window = qobject_cast<QQuickWindow *>(root.get());
    if (!window) {
        return false;
    }
    window->resize(picture.size);
    window->show();
    const bool isArranged = !picture.arrange || picture.arrange(*window);
    runEvents(fadeInMs, [] { return false; });
    // Another ground, by a shade that nobody sees: now all is drawn anew, and not only what
    // changed, which the software renderer doesn't always get whole.
    const QColor ground = window->color();
    window->setColor(QColor(ground.red(), ground.green(), ground.blue() ^ 1));
    return isArranged &&
           window->grabWindow().save(folder.filePath(picture.name + QStringLiteral(".png")));
}

bool takeOrTell(const ScreenPicture &picture, const QDir &folder) {
    try {
        return take(picture, folder);
    } catch (const corvane::Failure &failure) {
        QTextStream(stderr) << failure.description() << '\n';
        return false;
    }
}

} // namespace

std::unique_ptr<QObject> corvane::windowOf(QQmlEngine &engine, const QByteArray &qml,
                                           const QVariantMap &properties) {
    QQmlComponent component(&engine);
    component.setData(qml, QUrl(QStringLiteral("qrc:/picture.qml")));
    if (!component.isReady()) {
        QTextStream(stderr) << component.errorString();
        return nullptr;
    }
    return std::unique_ptr<QObject>(component.createWithInitialProperties(properties));
}

bool corvane::waitUntil(const std::function<bool()> &condition) {
    runEvents(longestWaitInMs, condition);
    return condition();
}

int main(int argc, char **argv) {
    const QTemporaryDir settings; // in the place of the user's own
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    corvane::setUpFonts(application);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws every screen to FOLDER/<screen>.png."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("where to"));
    parser.addPositionalArgument(QStringLiteral("SCREEN"), QStringLiteral("only these"),
                                 QStringLiteral("[SCREEN...]"));
    parser.process(application);
    QStringList wanted = parser.positionalArguments();
    if (wanted.isEmpty()) {
        parser.showHelp(2);
    }
    const QDir folder(wanted.takeFirst());
    int status = folder.mkpath(QStringLiteral(".")) ? 0 : 1;
    for (const ScreenPicture &picture : corvane::galleryPictures() + corvane::shellPictures() +
                                            corvane::reviewPictures() + corvane::flowPictures()) {
        if (!wanted.isEmpty() && !wanted.contains(picture.name)) {
            continue;
        }
        const bool taken = takeOrTell(picture, folder);
        QTextStream(taken ? stdout : stderr)
            << (taken ? "" : "failed: ") << folder.filePath(picture.name) << ".png\n";
        status = taken ? status : 1;
    }
    return status;
}
