#include "Screenshot.h"

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

/// Takes screenshots of every screen as PNG files, without a display. Exit status 1 if one fails.
namespace {

using corvane::Screenshot;

constexpr int settleMs = 400; ///< longer than every animation
constexpr int timeoutMs = 180000;

void runEvents(int ms, const std::function<bool()> &condition) {
    const QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired() && !condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
}

bool take(const Screenshot &screenshot, const QDir &folder) {
    QQmlEngine engine;
    const std::unique_ptr<QObject> root = screenshot.create(engine);
    auto *window = qobject_cast<QQuickWindow *>(root.get());
    if (!window) {
        return false;
    }
    window->resize(screenshot.size);
    window->show();
    const bool isArranged = !screenshot.arrange || screenshot.arrange(*window);
    runEvents(settleMs, [] { return false; });
    // An invisible change of the background makes the software renderer repaint everything. Its
    // partial updates are sometimes incomplete.
    const QColor color = window->color();
    window->setColor(QColor(color.red(), color.green(), color.blue() ^ 1));
    return isArranged &&
           window->grabWindow().save(folder.filePath(screenshot.name + QStringLiteral(".png")));
}

bool takeOrReport(const Screenshot &screenshot, const QDir &folder) {
    try {
        return take(screenshot, folder);
    } catch (const corvane::Failure &failure) {
        QTextStream(stderr) << failure.description() << '\n';
        return false;
    }
}

} // namespace

std::unique_ptr<QObject> corvane::createWindow(QQmlEngine &engine, const QByteArray &qml,
                                               const QVariantMap &properties) {
    QQmlComponent component(&engine);
    component.setData(qml, QUrl(QStringLiteral("qrc:/screenshot.qml")));
    if (!component.isReady()) {
        QTextStream(stderr) << component.errorString();
        return nullptr;
    }
    return std::unique_ptr<QObject>(component.createWithInitialProperties(properties));
}

bool corvane::waitUntil(const std::function<bool()> &condition) {
    runEvents(timeoutMs, condition);
    return condition();
}

int main(int argc, char **argv) {
    const QTemporaryDir settings; // instead of the user's
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
    for (const Screenshot &screenshot :
         corvane::galleryScreenshots() + corvane::shellScreenshots() +
             corvane::reviewScreenshots() + corvane::flowScreenshots()) {
        if (!wanted.isEmpty() && !wanted.contains(screenshot.name)) {
            continue;
        }
        const bool isTaken = takeOrReport(screenshot, folder);
        QTextStream(isTaken ? stdout : stderr)
            << (isTaken ? "" : "failed: ") << folder.filePath(screenshot.name) << ".png\n";
        status = isTaken ? status : 1;
    }
    return status;
}
