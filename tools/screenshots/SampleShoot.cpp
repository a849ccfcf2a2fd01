#include "SampleShoot.h"

#include "Footage.h"

#include "platform/Tasks.h"
#include "review/ReviewScreenState.h"

#include <QStandardPaths>

namespace corvane {

namespace {

class SampleShootError : public Failure {
  public:
    using Failure::Failure;
};

QList<Clip> sampleClips() {
    return {
        {"A003_C001_0612.MOV", Scene::Tide, 1, 72},
        {SampleShoot::kMainClip, Scene::Tide, 3, 42, 720},
        {"A003_C003_0612.MOV", Scene::Tide, 5, 8},
        {"A003_C007_0612.MOV", Scene::Gate, 7, 206},
        {"A003_C008_0612.MOV", Scene::Gate, 10, 114},
        {"A004_C001_0612.MOV", Scene::Lantern, 3, 33},
        {"A004_C002_0612.MOV", Scene::Lantern, 8, 29},
        {"A004_C005_0612.MOV", Scene::Forest, 2, 311},
        {"B001_C014_0612.MP4", Scene::Sea, 4, 340},
        {"B001_C015_0612.MP4", Scene::Sea, 9, 57},
        {"C002_C031_0613.MOV", Scene::Peaks, 9, 157},
        {"C002_C034_0613.MOV", Scene::Dunes, 5, 64},
        {"DJI_0042.MP4", Scene::Peaks, 10, 258},
        {"DJI_0043.MP4", Scene::Peaks, 12, 88},
        {"DJI_0058.MP4", Scene::Tide, 4, 131},
        {"GX010233.MP4", Scene::City, 11, 48},
        {"GX010236.MP4", Scene::Dunes, 12, 400},
        {"GX010240.MP4", Scene::City, 4, 22},
    };
}

struct ClipMarks {
    const char *fileName;
    int rating;
    const char *marks; ///< any of f (favorite), s (selected), x (rejected)
    const char *tags;
};

constexpr ClipMarks kClipMarks[] = {
    {"A003_C001_0612.MOV", 3, "", "tide"},
    {SampleShoot::kMainClip, 5, "fs", "tide,boat,first light,opening,no dialogue"},
    {"A003_C003_0612.MOV", 0, "x", "tide"},
    {"A003_C007_0612.MOV", 4, "fs", "tide gate"},
    {"A003_C008_0612.MOV", 4, "", "tide gate"},
    {"A004_C001_0612.MOV", 3, "f", "lantern"},
    {"A004_C002_0612.MOV", 4, "s", "lantern"},
    {"B001_C014_0612.MP4", 2, "", "tide"},
    {"C002_C031_0613.MOV", 4, "s", "ridge"},
    {"DJI_0042.MP4", 5, "fs", "ridge,air"},
    {"DJI_0058.MP4", 0, "", "tide,air"},
    {"GX010233.MP4", 3, "s", "harbour lights"},
};

struct SampleSubclip {
    const char *fileName;
    double in;
    double out;
    const char *label;
    int rating;
    bool favorite;
    bool selected;
};

constexpr SampleSubclip kSubclips[] = {
    {SampleShoot::kMainClip, 2.1, 9.44, "First light", 4, false, true},
    {SampleShoot::kMainClip, 12.4, 18.92, "Pole lift, wide", 5, true, true},
    {SampleShoot::kMainClip, 27, 33.36, "", 0, false, false},
    {"A003_C008_0612.MOV", 41.2, 58.08, "Gate opens", 4, false, true},
    {"B001_C014_0612.MP4", 300, 312, "Long swell", 0, false, true},
};

std::unique_ptr<OpenProjectScreen> silentScreen(CorvaneApp &app) {
    return std::make_unique<ProjectScreen>(app, media::MediaPlayer::Options());
}

} // namespace

SampleShoot::SampleShoot() : m_folder(QDir::tempPath() + QStringLiteral("/shoots-XXXXXX")) {
    makeClips(sampleClips(), path("cards/A"));
    const auto app = makeApp();
    waitUntilDone(app->store().createProject(
        {.name = QStringLiteral("Tidewater Day 2"), .shootDate = QStringLiteral("2025-06-12")},
        projectFile(), ProjectFolder::Create));
    app->store().consumePendingImport();
    importAll(*app, SourceImportMode::copied);
    review(*app);
    waitUntilDone(app->store().createProject({.name = QStringLiteral("Tidewater Day 3")},
                                             path("Tidewater Day 3.corvane")));
    app->store().consumePendingImport();
    importAll(*app, SourceImportMode::inPlace);
    waitUntilDone(app->store().closeProject());
    if (const auto &error = app->store().lastError()) {
        throw SampleShootError(error->description());
    }
}

SampleShoot &SampleShoot::shared() {
    static SampleShoot shoot;
    return shoot;
}

QString SampleShoot::path(const char *name) const {
    return m_folder.filePath(QLatin1String(name));
}

QString SampleShoot::projectFolder() const {
    return path("Tidewater Day 2");
}

QString SampleShoot::projectFile() const {
    return projectFolder() + QStringLiteral("/Tidewater Day 2.corvane");
}

std::unique_ptr<CorvaneApp> SampleShoot::makeApp(FilePanels *panels) const {
    auto app = std::make_unique<CorvaneApp>(
        CorvaneApp::Settings{.dataFolder = path("data"),
                             .panels = panels,
                             .userDefaults = std::make_unique<QSettings>(path("data/defaults.ini"),
                                                                         QSettings::IniFormat),
                             .hashes = ContentHashMigration::Awaited,
                             .makeProjectScreen = silentScreen});
    waitUntilDone(app->store().waitForStartUp());
    return app;
}

QString SampleShoot::clip(CorvaneApp &app, const char *fileName) {
    for (const VideoItem &video : app.store().project()->videos) {
        if (video->fileName == QLatin1String(fileName)) {
            return video->id;
        }
    }
    throw SampleShootError(QStringLiteral("not imported: ") + QLatin1String(fileName));
}

void SampleShoot::importAll(CorvaneApp &app, SourceImportMode mode) const {
    ImportViewModel import(&app.store());
    import.setSources({path("cards/A")});
    waitUntilDone(import.startScan());
    import.setMode(mode);
    waitUntilDone(import.beginImport());
    if (import.result().failedCount > 0) {
        throw SampleShootError(import.result().failures.first().message);
    }
}

void SampleShoot::review(CorvaneApp &app) const {
    ProjectStore &store = app.store();
    for (const ClipMarks &clipMarks : kClipMarks) {
        const QString id = clip(app, clipMarks.fileName);
        store.setRating(id, clipMarks.rating);
        const QByteArrayView marks(clipMarks.marks);
        if (marks.contains('f')) {
            store.toggleFavorite(id);
        }
        if (marks.contains('s')) {
            store.toggleSelectedForExport(id);
        }
        if (marks.contains('x')) {
            store.toggleRejected(id);
        }
        for (const QString &tag : QString::fromLatin1(clipMarks.tags).split(QLatin1Char(','))) {
            store.addTag(id, tag);
        }
    }
    const QString main = clip(app, SampleShoot::kMainClip);
    store.setNotes(main, QStringLiteral("Sun clears the ridge at 0:11. The pole lift at 0:13 is "
                                        "the one; the second try is soft for four frames. Sound: "
                                        "birds only, no engine."));
    for (const char *const copied : {SampleShoot::kMainClip, "DJI_0042.MP4"}) {
        store.updateVideo(clip(app, copied), [](VideoRecord &video) {
            video.hdPath = QStringLiteral("media/HD/") + video.fileName;
        });
    }
    for (const SampleSubclip &range : kSubclips) {
        const QString id = clip(app, range.fileName);
        const SubclipKey key{id, store.addSubclip(id, range.in, range.out)};
        store.renameSubclip(key, QString::fromLatin1(range.label));
        store.setSubclipRating(key, range.rating);
        if (range.favorite) {
            store.toggleSubclipFavorite(key);
        }
        if (!range.selected) { // new subclips are selected
            store.toggleSubclipSelected(key);
        }
        const VideoRecord &video = *store.video(id);
        SubclipThumbnails::generate(video.subclips.last(), video.sourcePath, projectFolder(),
                                    ReviewScreenState::mediaServices().subclipThumbnail);
    }
}

QString SampleShoot::cardWithNewClips() {
    struct NewClip {
        Clip clip;
        double gigabytes;
        bool hasSidecar;
    };
    static const NewClip newClips[] = {
        {{"A005_C001_0614.MOV", Scene::Forest, 21, 2}, 0.0421, true},
        {{"A005_C002_0614.MOV", Scene::Gate, 22, 2}, 0.0187, true},
        {{"A005_C003_0614.MOV", Scene::Sea, 23, 2}, 0.0092, true},
        {{"B002_C001_0614.MOV", Scene::Peaks, 25, 2}, 1.84, true},
        {{"B002_C002_0614.MOV", Scene::Tide, 26, 2}, 0.9124, false},
        {{"DJI_0051.MP4", Scene::Peaks, 30, 2}, 1.28, false},
        {{"DJI_0052.MP4", Scene::Dunes, 27, 2}, 0.8046, false},
        {{"GX010233.MP4", Scene::City, 28, 2}, 0.331, true},
        {{"GX010236.MP4", Scene::Lantern, 29, 2}, 0.213, false},
        {{"GX010251.MP4", Scene::City, 31, 2}, 0.329, false},
    };
    const QString card = path("cards/B");
    if (QFileInfo::exists(card)) {
        return card;
    }
    for (const NewClip &item : newClips) {
        makeClips({item.clip}, card);
        const QString file = card + QLatin1Char('/') + QLatin1String(item.clip.fileName);
        stretchFile(file, qint64(item.gigabytes * 1e9));
        if (item.hasSidecar) {
            QFile sidecar(file.chopped(4) + QStringLiteral(".XML"));
            if (!sidecar.open(QFile::WriteOnly) || sidecar.write("<clip/>") < 0) {
                throw SampleShootError(sidecar.errorString());
            }
        }
    }
    for (const char *const imported : {"DJI_0042.MP4", "DJI_0043.MP4", "C002_C034_0613.MOV"}) {
        const QString name = QLatin1Char('/') + QLatin1String(imported);
        QFile::copy(path("cards/A") + name, card + name);
    }
    return card;
}

} // namespace corvane
