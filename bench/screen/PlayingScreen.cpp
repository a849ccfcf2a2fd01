// The window of an open project, drawn in software: time from a change of selection to the first
// frame, compared to a seek in the same file; main thread load during playback of 1080p video; and
// the longest time without response during import and export.
#include "BenchData.h"

#include "document/ProjectFileIO.h"
#include "kit/Fonts.h"
#include "platform/ProcessLocale.h"
#include "platform/Tasks.h"
#include "shell/project/ProjectScreen.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <mutex>
#include <random>

using namespace corvane;

namespace {

constexpr int kRate = 25;
constexpr int kSeconds = 24;
constexpr int kTurns = 15;
constexpr std::chrono::seconds kPlayed{8};

/// Records the media file and the time of the last displayed frame.
class LastFrame : public media::FrameSink {
  public:
    QSize wantedSize() const override { return {1280, 720}; }
    void show(media::DisplayFrame frame) override {
        const std::scoped_lock lock(m_mutex);
        m_item = frame.item;
        m_seconds = frame.time.seconds();
    }
    void clear() override {}

    bool shows(quint64 item, double seconds) {
        const std::scoped_lock lock(m_mutex);
        return m_item == item && std::abs(m_seconds - seconds) < 1.0 / kRate;
    }

  private:
    std::mutex m_mutex;
    quint64 m_item = 0;
    double m_seconds = -1;
};

QString videoFile(const QString &encoder, int gop) {
    const QString path =
        bench::dataPath(QStringLiteral("%1-1920x1080-%2.mp4").arg(encoder).arg(gop));
    if (!QFileInfo::exists(path)) {
        bench::runCommand(QStringLiteral("ffmpeg -v error -y -f lavfi -i testsrc2=s=1920x1080:r=%1 "
                                         "-t %2 -c:v %3 -preset superfast -x265-params "
                                         "log-level=none -pix_fmt yuv420p -g %4 -bf 2 '%5'")
                              .arg(kRate)
                              .arg(kSeconds)
                              .arg(encoder)
                              .arg(gop)
                              .arg(path));
    }
    return path;
}

/// A project with every video twice, so that every selection loads another clip.
QString projectOf(const QString &folder, const QStringList &videoFiles) {
    Project project{.id = newIdentifier(),
                    .name = QStringLiteral("Bench"),
                    .createdAt = QDateTime::currentDateTimeUtc(),
                    .updatedAt = QDateTime::currentDateTimeUtc()};
    for (const QString &file : videoFiles) {
        for (int copy = 0; copy < 2; ++copy) {
            VideoRecord clip;
            clip.id = newIdentifier();
            clip.fileName = file;
            clip.sourcePath = file;
            clip.durationSeconds = kSeconds;
            clip.createdAt = clip.updatedAt = project.createdAt;
            project.videos.append(VideoItem(clip));
        }
    }
    const QString projectFile = folder + QStringLiteral("/Bench.corvane");
    waitUntilDone(ProjectFileIO().save(project, projectFile, false));
    return projectFile;
}

/// Runs the event loop until the condition holds, for a minute at most. Returns the time taken in
/// milliseconds.
double timeUntil(const std::function<bool()> &holds) {
    QElapsedTimer time;
    time.start();
    while (!holds() && time.elapsed() < 60'000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    return double(time.nsecsElapsed()) / 1e6;
}

double medianOf(std::vector<double> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

double mainThreadMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void measureSelection(ProjectScreen &screen, const Project &project, int video, const char *name) {
    const auto sink = std::make_shared<LastFrame>();
    media::MediaPlayer &player = screen.engine()->player();
    player.setSink(sink);
    std::mt19937 random(5);
    std::vector<double> selections;
    std::vector<double> seeks;
    for (int turn = 0; turn < kTurns; ++turn) {
        screen.review()->selection()->selectClip(project.videos[video * 2 + turn % 2]->id);
        selections.push_back(timeUntil([&] { return sink->shows(player.currentItem(), 0); }));
        timeUntil([&] { return screen.engine()->isReady(); });
        const double to = std::uniform_real_distribution<>(1, kSeconds - 1)(random);
        screen.engine()->seek(to);
        seeks.push_back(timeUntil([&] { return sink->shows(player.currentItem(), to); }));
    }
    const double selection = medianOf(selections);
    const double seek = medianOf(seeks);
    std::printf(
        "%-52s %11.1f ms %11.1f ms %7.2f  <= 1.3\n",
        qPrintable(
            QStringLiteral("selection to its picture, %1 / a seek in it").arg(QLatin1String(name))),
        selection, seek, selection / seek);
}

void measurePlaying(ProjectScreen &screen, QQuickWindow &window, const Project &project) {
    screen.review()->selection()->selectClip(project.videos[0]->id);
    timeUntil([&] { return !screen.review()->filmstrip()->filmstripGenerating(); });
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { ++frames; });
    screen.review()->transport()->togglePlayback();
    timeUntil([&] { return screen.engine()->currentSeconds() > 0.5; });
    QElapsedTimer clock;
    clock.start();
    frames = 0;
    const double before = mainThreadMilliseconds();
    QEventLoop loop; // sleeps between events
    QTimer::singleShot(kPlayed, &loop, &QEventLoop::quit);
    loop.exec();
    const double busy = (mainThreadMilliseconds() - before) / double(clock.elapsed());
    const double drawn = frames * 1000.0 / double(clock.elapsed());
    screen.engine()->pause();
    std::printf("%-52s %11.1f %%  %31s < 25 %%\n", "main thread while 1080p plays", busy * 100, "");
    std::printf("%-52s %11.1f    %31s >= %d\n", "frames drawn a second meanwhile", drawn, "",
                kRate);
}

/// Chooses the same folder each time.
class OneFolder : public FilePanels {
  public:
    explicit OneFolder(QString folder) : m_folder(std::move(folder)) {}

    void openProjectFile(Chosen) override {}
    void save(const SavePanel &, Chosen) override {}
    void chooseFolder(const ChoosePanel &, Chosen chosen) override { chosen(m_folder); }
    void chooseFiles(const ChoosePanel &, ChosenFiles) override {}

  private:
    QString m_folder;
};

/// Runs the event loop until the condition holds. Returns the longest iteration in milliseconds.
double longestTurnUntil(const std::function<bool()> &holds) {
    double longest = 0;
    while (!holds()) {
        QElapsedTimer turn;
        turn.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        longest = std::max(longest, double(turn.nsecsElapsed()) / 1e6);
        QThread::usleep(200);
    }
    return longest;
}

void measureResponsiveness(ProjectScreen &screen, CorvaneApp &app, const QStringList &videoFiles) {
    ImportSheet &importing = *screen.importing();
    importing.openWith(videoFiles);
    importing.scan();
    const double scanning =
        longestTurnUntil([&] { return importing.stage() == ImportViewModel::Stage::results; });
    importing.setMode(1);
    importing.beginImport();
    const double copying =
        longestTurnUntil([&] { return importing.stage() == ImportViewModel::Stage::done; });
    importing.dismiss();
    const QList<VideoItem> videos = app.store().project()->videos;
    for (const VideoItem &video : videos) {
        if (video->sourceImportMode == SourceImportMode::copied) {
            app.store().toggleSelectedForExport(video->id);
        }
    }
    ExportSheet &exporting = *screen.exporting();
    exporting.open();
    exporting.chooseFolder();
    longestTurnUntil([&] { return exporting.canStart(); });
    exporting.start();
    const double delivering =
        longestTurnUntil([&] { return exporting.stage() == DeliveryFlow::Stage::done; });
    if (exporting.result().failed > 0 || exporting.result().succeeded == 0) {
        qFatal("the export failed");
    }
    exporting.dismiss();
    const auto print = [](const char *what, double longest) {
        std::printf("%-52s %11.1f ms %31s < 100 ms\n", what, longest, "");
    };
    print("longest turn of the window while it scans", scanning);
    print("longest turn while it imports copies", copying);
    print("longest turn while it exports", delivering);
}

} // namespace

int main(int argc, char **argv) {
    useUtf8Locale();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    setUpFonts(application);
    const QTemporaryDir folder;
    const QStringList videoFiles{videoFile(QStringLiteral("libx264"), 12),
                                 videoFile(QStringLiteral("libx264"), 300),
                                 videoFile(QStringLiteral("libx265"), 12)};
    const QString file = projectOf(folder.path(), videoFiles);
    OneFolder panels(folder.path());
    CorvaneApp app({.dataFolder = folder.filePath(QStringLiteral("data")),
                    .panels = &panels,
                    .userDefaults = std::make_unique<QSettings>(
                        folder.filePath(QStringLiteral("defaults.ini")), QSettings::IniFormat),
                    .makeProjectScreen = [](CorvaneApp &app) {
                        return std::make_unique<ProjectScreen>(app, media::MediaPlayer::Options());
                    }});
    waitUntilDone(app.store().openProject(file));
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&app)}});
    engine.loadData("import Corvane.Shell\nMainWindow {}");
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    auto *const screen = qobject_cast<ProjectScreen *>(app.projectScreen());
    if (!window || !screen) {
        return 1;
    }
    window->show();
    const Project project = *app.store().project();
    measurePlaying(*screen, *window, project);
    measureSelection(*screen, project, 0, "H.264, 12");
    measureSelection(*screen, project, 1, "H.264, 300");
    measureSelection(*screen, project, 2, "HEVC, 12");
    const QString other = folder.filePath(QStringLiteral("Other.corvane"));
    waitUntilDone(app.store().createProject({.name = QStringLiteral("Other")}, other));
    measureResponsiveness(*screen, app, videoFiles);
    return 0;
}
