// The side pane with 25,000 clips and 125,000 subclips, each with a thumbnail, drawn in software:
// main thread time per frame while the list scrolls at 60 frames per second, and the rows redrawn
// for one edit.
#include "BenchData.h"

#include "kit/Fonts.h"
#include "media/RGBImage.h"
#include "platform/AtomicWrite.h"
#include "platform/ProcessLocale.h"
#include "platform/Tasks.h"
#include "review/ReviewScreenState.h"
#include "review/ui/JpegTask.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>
#include <thread>

using namespace corvane;

namespace {

constexpr int kClips = 25'000;
constexpr int kPictures = 200;
constexpr int kFrames = 600;
constexpr QSize kWindow = {1440, 900};

constexpr auto kPane = R"(
    import Corvane.Kit
    import Corvane.Review
    SidePane { width: 300; height: 900 })";

/// A player that does nothing.
class NoPlayer : public ReviewPlayer {
  public:
    double currentSeconds() const override { return 0; }
    double durationSeconds() const override { return 0; }
    double rate() const override { return 0; }
    double fps() const override { return 25; }
    bool isReady() const override { return true; }
    QCoro::Task<> load(QString) override { co_return; }
    void seek(double) override {}
    void stepFrames(int) override {}
    void setRate(double) override {}
    bool isSettled() const override { return true; }
    void playConstrained(double, double) override {}
    void clearPlaybackConstraint() override {}
};

QByteArray noisyPicture(int seed) {
    media::RGBImage image{.width = 480, .height = 270, .pixels = {}};
    for (int index = 0; index < image.width * image.height * 3; ++index) {
        image.pixels.append(char((index * (seed + 7) / 50 + index / 1440) & 0xff));
    }
    return image.encodedJPEG(0.8);
}

Project projectWithPictures(const QString &folder) {
    Project project = bench::largeProject(kClips);
    const QString thumbs = folder + QStringLiteral("/.corvane-cache/thumbs");
    fileSystem().createFolders(thumbs);
    for (int index = 0; index < kPictures; ++index) {
        writeAtomically(thumbs + QStringLiteral("/%1.jpg").arg(index), noisyPicture(index));
    }
    for (qsizetype index = 0; index < project.videos.size(); ++index) {
        project.videos[index].edit().thumbnailPath =
            QStringLiteral("thumbs/%1.jpg").arg(index % kPictures);
    }
    return project;
}

/// Processor time of the calling thread, which other load on the machine doesn't affect.
double threadMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// A window with the side pane. Measures the main thread's time per frame.
class Pane {
  public:
    explicit Pane(ReviewScreenState &review) {
        QQmlComponent component(&m_engine);
        component.setData(kPane, QUrl(QStringLiteral("qrc:/bench.qml")));
        m_item.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("review"), QVariant::fromValue(&review)}})));
        if (!m_item) {
            qFatal("%s", qUtf8Printable(component.errorString()));
        }
        m_item->setParentItem(m_window.contentItem());
        m_window.resize(kWindow);
        m_window.show();
        m_list = m_item->findChild<QQuickItem *>(QStringLiteral("review.list"));
        settle();
    }

    QQuickItem &list() { return *m_list; }
    QImage picture() { return m_window.grabWindow(); }
    void settle() {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < 500) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        }
    }

    /// Scrolls to `contentY`, draws a frame and returns the processor time in milliseconds.
    double frame(double contentY) {
        constexpr std::chrono::milliseconds kInterval(16);
        const auto begun = std::chrono::steady_clock::now();
        const double before = threadMilliseconds();
        m_list->setProperty("contentY", contentY);
        QCoreApplication::processEvents();
        QEvent update(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&m_window, &update);
        const double worked = threadMilliseconds() - before;
        std::this_thread::sleep_until(begun + kInterval);
        return worked;
    }

    void scroll(const char *title, double step) {
        const double from = m_list->property("originY").toDouble();
        std::vector<double> times;
        for (int index = 0; index < kFrames; ++index) {
            const double end = m_list->property("originY").toDouble() +
                               m_list->property("contentHeight").toDouble() - m_list->height();
            const double wanted =
                step > 0 ? from + step * index : from + end * index / (kFrames - 1);
            times.push_back(frame(std::min(wanted, end)));
        }
        std::ranges::sort(times);
        std::printf("%-52s %8.2f ms %8.2f ms %8.2f ms\n", title, times[kFrames / 2],
                    times[kFrames * 99 / 100], times.back());
    }

  private:
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_item;
    QQuickItem *m_list = nullptr;
};

/// Rates one clip and prints how many rows change a property and how many lines of pixels change.
void starOneRow(Pane &pane, ProjectStore &store, const QString &id) {
    const QString row = QStringLiteral("clip-") + id;
    std::vector<std::pair<QQuickItem *, std::unique_ptr<QSignalSpy>>> spies;
    const QList<QQuickItem *> items =
        pane.list().property("contentItem").value<QQuickItem *>()->childItems();
    for (QQuickItem *item : items) {
        const QMetaObject *type = item->metaObject();
        for (int index = 0; item->property("rowId").isValid() && index < type->propertyCount();
             ++index) {
            if (type->property(index).hasNotifySignal()) {
                spies.emplace_back(
                    item, std::make_unique<QSignalSpy>(item, type->property(index).notifySignal()));
            }
        }
    }
    const QImage before = pane.picture();
    store.setRating(id, 1 + store.video(id)->rating % 5);
    const QImage after = pane.picture();
    QSet<QQuickItem *> changed;
    for (const auto &[item, spy] : spies) {
        if (!spy->isEmpty()) {
            changed.insert(item);
        }
    }
    QList<int> lines;
    for (int y = 0; y < before.height(); ++y) {
        if (!std::equal(before.constScanLine(y), before.constScanLine(y) + before.bytesPerLine(),
                        after.constScanLine(y))) {
            lines.append(y);
        }
    }
    std::printf("%-52s %8lld rows of %lld, %lld lines of the window\n", "one star redraws",
                qint64(changed.size()), qint64(items.size()),
                lines.isEmpty() ? 0 : qint64(lines.last() - lines.first() + 1));
}

} // namespace

int main(int argc, char **argv) {
    useUtf8Locale();
    QStandardPaths::setTestModeEnabled(true);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    setUpFonts(application);

    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("Harbor.corvane"));
    ProjectFileIO io;
    ProjectRegistry registry{folder.filePath(QStringLiteral("data"))};
    BackupService backups;
    MediaSourceAuthorization authorization{folder.filePath(QStringLiteral("data"))};
    ProjectStore store{io, registry, backups, authorization};
    Project project = projectWithPictures(folder.path());
    Project empty = project; // the entire project exceeds the size limit of a file
    empty.videos.clear();
    waitUntilDone(io.save(empty, file, true));
    waitUntilDone(store.openProject(file));
    project.filePath = file;
    store.updateProject(std::move(project));
    NoPlayer player;
    ReviewScreenState review{store, player};
    review.appear();
    {
        Pane pane(review);
        std::printf("%-52s %11s %11s %11s\n", "a frame's work, 25,000 clips with 125,000 subclips",
                    "median", "99 of 100", "longest");
        pane.scroll("rows, by the wheel (60 px a frame)", 60);
        pane.scroll("rows, end to end in 10 s", 0);
        pane.frame(0);
        pane.settle();
        starOneRow(pane, store, store.project()->videos.at(0)->id);
        review.filterBar()->setUseLargeThumbnails(true);
        pane.settle();
        pane.scroll("cards, by the wheel (60 px a frame)", 60);
        pane.scroll("cards, end to end in 10 s", 0);
        pane.settle();
        std::printf("%-52s %8.2f MB\n", "pictures held at the end",
                    double(HeldImage::totalBytes()) / 1e6);
    }
    return 0;
}
