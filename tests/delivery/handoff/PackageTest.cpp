// The contents of a package.

#include "delivery/handoff/HandoffFixture.h"

#include "delivery/handoff/PackageProject.h"
#include "support/Command.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>

#include <unistd.h>

using namespace corvane;
using namespace corvane::test;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class PackageTest : public HandoffTest {
  protected:
    /// Adds a clip with every field, a subclip, a sidecar and cached images.
    void addFullClip() {
        VideoRecord &video = addVideo("gull wide.mov", "gulls");
        VideoRecord changed = *fullProject().videos.first();
        changed.id = video.id;
        changed.sourcePath = video.sourcePath;
        changed.originalSourcePath = at("footage/card/gull wide.mov");
        changed.parentFolder = at("footage");
        changed.hdPath = at("project/hd.mp4");
        changed.proxyPath = at("project/.corvane-cache/proxies/p.mov");
        changed.thumbnailPath = at("project/.corvane-cache/thumbnails/t.jpg");
        changed.filmstripPath = at("project/.corvane-cache/f");
        changed.cameraMetadata = {{text("file"), at("footage/gull wide.mov")}};
        changed.selectedForExport = true;
        changed.subclips.clear();
        video = changed;
        addSidecar(video, "gull wide.xml", "<x/>");
        addSubclip(video, "Pan");
        addCache(text("thumbnails/%1.jpg").arg(video.id), "kept");
        addFilmstrip(video);
    }
};

/// Exits without cleanup, like a killed process, at the n-th call on a file of the destination.
class PackageKillTest : public PackageTest {
  protected:
    static constexpr const char *kCall = "CORVANE_TEST_KILL_AT";
    static constexpr int kKilled = 42;

    void handOverUntilKilled(int call) {
        addFullClip();
        addVideo("b.mov", "b");
        grantAndOpen();
        files.setObserver([call, counted = std::make_shared<std::atomic<int>>(0),
                           out = at("out")](const QString &, const QString &path) {
            if (path.startsWith(out) && ++*counted == call) {
                ::_exit(kKilled);
            }
        });
        handoff.projectName = text("Show");
        run(plan());
        files.setObserver({});
    }
    /// Does the same in a child process with its own folder.
    int exitCodeWhenKilled(int call, const QString &temporary) {
        return runCommand({text("env"), text("-u"), text("GTEST_OUTPUT"),
                           text("TMPDIR=") + temporary,
                           text(kCall) + text("=") + QString::number(call),
                           QCoreApplication::applicationFilePath(),
                           text("--gtest_filter=PackageKillTest.*")})
            .exitCode;
    }
    /// True if the package has its final document.
    static bool isFinished(const QString &packageFolder) {
        const Project project = ProjectFileIO::loadNow(packageFolder + text("/Show.corvane"));
        if (project.videos.isEmpty()) {
            EXPECT_TRUE(project.notes->contains(text("incomplete handoff")));
            return false;
        }
        EXPECT_THAT(project.videos, SizeIs(3));
        for (const VideoItem &video : project.videos) {
            EXPECT_TRUE(QFileInfo(packageFolder + text("/") + video->sourcePath).isFile());
        }
        return true;
    }
};

} // namespace

TEST_F(PackageTest, ContainsNoPathsOfTheSourceAndLeavesTheSourceUnchanged) {
    addFullClip();
    project.rootFolders = {at("footage")};
    project.exportBatches = {{.id = text("batch"), .outputFolder = at("project/selects")}};
    grantAndOpen();
    const auto contents = [this] {
        QHash<QString, QByteArray> files;
        for (const char *root : {"project", "footage"}) {
            for (const QString &name : folder.names(root)) {
                files.insert(name, folder.read(text(root) + text("/") + name));
            }
        }
        return files;
    };
    const auto before = contents();
    handoff.projectName = text("Show");
    handoff.outputMode = HandoffOutputMode::primaryAndHd;
    ASSERT_THAT(run(plan()).succeeded, SizeIs(2));
    const QStringList names = folder.names("out");
    EXPECT_GT(names.size(), 20);
    for (const QString &name : names) {
        const QByteArray bytes = folder.read(text("out/") + name);
        for (const QByteArray &searched : {QByteArray("footage"), at("project").toUtf8(),
                                           QByteArray("/card"), at("tmp").toUtf8()}) {
            EXPECT_FALSE(bytes.contains(searched) || name.contains(QString::fromUtf8(searched)))
                << name.toStdString() << " holds " << searched.data();
        }
    }
    const Project package = delivered();
    EXPECT_EQ(package.videos.first()->originalSourcePath, text("gull wide.mov"));
    EXPECT_EQ(package.rootFolders, QStringList{at("out/Show/media")});
    EXPECT_NE(package.id, project.id);
    EXPECT_THAT(package.exportBatches, IsEmpty());
    EXPECT_EQ(contents(), before);
    expectNoTemporaries();
}

TEST(PackageProject, RewritesPathsAndKeepsUserData) {
    VideoItem source = fullProject().videos.first();
    source.edit().id = text("8d7c8c0e-2b6c-4f52-9a35-0d9c6a1f1b11");
    const VideoItem item = PackageProject::rewrittenClip(source, {text("A (2).mov"), {}});
    VideoItem expected = source;
    expected.edit().sourcePath = text("media/A (2).mov");
    expected.edit().sourceImportMode = SourceImportMode::copied;
    expected.edit().originalSourcePath = text("clip-0");
    expected.edit().parentFolder = text("media");
    expected.edit().thumbnailPath = text("thumbnails/8D7C8C0E-2B6C-4F52-9A35-0D9C6A1F1B11.jpg");
    expected.edit().filmstripPath.reset();
    expected.edit().hdPath.reset();
    expected.edit().proxyPath.reset();
    expected.edit().needsProxy.reset();
    expected.edit().cameraMetadata.reset();
    expected.edit().sidecarPath = text("media/A (2).xml");
    EXPECT_EQ(item, expected);

    source.edit().sourcePath = text("/");
    source.edit().sidecarPath = text("");
    const VideoItem bare = PackageProject::rewrittenClip(source, {text("a.mov"), text("a.mp4")});
    EXPECT_EQ(bare->originalSourcePath, std::nullopt);
    EXPECT_EQ(bare->sidecarPath, QString());
    EXPECT_EQ(bare->hdPath, text("media/HD/a.mp4"));
}

TEST(PackageProject, BuildsAClipFromAnExtractedSubclip) {
    VideoRecord parent = *fullProject().videos.first();
    parent.rating = 4;
    Subclip subclip = parent.subclips.first();
    subclip.rating = 0;
    subclip.favorite = true;
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(5, Qt::UTC);
    PackageProject::ExtractedSubclip extracted{
        .parent = parent,
        .subclip = subclip,
        .range = {1, 3.5},
        .output = {text("p.mov"), text("p.mp4")},
        .facts = {.videoId = text("NEW"), .width = 640, .audioCodec = text("twos")},
        .fileSizeBytes = 7};
    const VideoRecord expected{.id = text("NEW"),
                               .sourcePath = text("media/p.mov"),
                               .sourceImportMode = SourceImportMode::copied,
                               .originalSourcePath = text("clip-0"),
                               .fileName = text("p.mov"),
                               .parentFolder = text("media"),
                               .durationSeconds = 2.5,
                               .width = 640,
                               .height = 2160,
                               .fps = parent.fps,
                               .codec = text("avc1"),
                               .audioCodec = text("twos"),
                               .fileSizeBytes = 7,
                               .hdPath = text("media/HD/p.mp4"),
                               .bitRateBps = parent.bitRateBps,
                               .pixelFormat = text("420v"),
                               .rating = 4,
                               .favorite = true,
                               .reviewed = true,
                               .reviewedAt = now,
                               .tags = parent.tags,
                               .notes = text("n"),
                               .exportedAt = now,
                               .createdAt = now,
                               .updatedAt = now};
    EXPECT_EQ(*PackageProject::clipOf(extracted, now), expected);
    subclip.rating = 2;
    extracted.facts.durationSeconds = 9;
    EXPECT_EQ(PackageProject::clipOf(extracted, now)->rating, 2);
    EXPECT_EQ(PackageProject::clipOf(extracted, now)->durationSeconds, 9);
}

TEST_F(PackageKillTest, LeavesAStubOrACompletePackageAfterAKill) {
    if (const int call = qEnvironmentVariableIntValue(kCall)) {
        handOverUntilKilled(call);
        return;
    }
    constexpr int kStride = 19;
    bool wasStub = false;
    for (int call = 1;; call += kStride) {
        const QString temporary = folder.folder(QString::number(call));
        const int code = exitCodeWhenKilled(call, temporary);
        ASSERT_TRUE(code == kKilled || code == 0) << "call " << call;
        QDirIterator packages(temporary, {text("*.corvane")}, QDir::Files | QDir::Hidden,
                              QDirIterator::Subdirectories);
        while (packages.hasNext()) {
            const QString package = QFileInfo(packages.next()).path();
            if (package.contains(text("/out/"))) {
                wasStub = !isFinished(package) || wasStub;
            }
        }
        if (code == 0) {
            break;
        }
    }
    EXPECT_TRUE(wasStub);
}
