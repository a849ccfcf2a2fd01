#include "transfer/AVExportSession.h"

#include "transfer/TransferFixture.h"
#include "trust/ContentHasher.h"
#include "trust/PathSafety.h"

#include <semaphore>

using namespace corvane;
using namespace corvane::test;
using media::ExportPreset;

namespace {

class AVExportSessionTest : public TransferTest {
  protected:
    /// Returns the description of the failure, or an empty text.
    QString transcode() {
        try {
            await(AVExportSession::transcodeVetted(
                job, sessions, [&](double p) { fractions.append(p); }, stop.get_token(), clock));
        } catch (const AVExportSession::SessionError &error) {
            return error.description();
        }
        return {};
    }
    void expectOldDestination() const {
        EXPECT_EQ(delivered("clip.mp4"), "older");
        expectNoTemporaries();
    }
    ImportCopier::SourceRoot granted(const QString &file) const {
        RootIdentity identity = *PathSafety::folderIdentity(at("footage"));
        identity.contentHash = ContentHasher::makeAnchor(file);
        return {at("footage"), identity};
    }
    Destination into(const QString &path) const {
        return Destination::below(out, path, Placing::mayReplaceRegular);
    }

    const QByteArray bytes = noise(70'000);
    const QString source = folder.write(footage("clip"), bytes);
    const QString destination = folder.write("out/clip.mp4", "older");
    OpenFolder out = OpenFolder::at(at("out"));
    AVExportSession::Transcode job{.source = source,
                                   .sourceRoot = granted(source),
                                   .destination = into(destination),
                                   .preset = ExportPreset::passthrough,
                                   .range = ClipRange{1.5, 2.0}};
    std::stop_source stop;
    QList<double> fractions;
};

} // namespace

TEST_F(AVExportSessionTest, EncodesAVerifiedCopyAndReplacesTheDestinationOnceComplete) {
    sessions.halfway = [&](const QString &output) {
        EXPECT_EQ(fileSystem().linkStatus(sessions.assets.at(0))->permissions, 0600);
        EXPECT_EQ(delivered("clip.mp4"), "older");
        EXPECT_TRUE(output.startsWith(at("out/.tmp.")));
        EXPECT_TRUE(output.endsWith(text(".mp4")));
    };
    EXPECT_EQ(transcode(), QString());
    EXPECT_EQ(delivered("clip.mp4"),
              FakeSessions::output(ExportPreset::passthrough, bytes, {{{900}, {1200}}}));
    EXPECT_TRUE(sessions.assets.at(0).contains(text("/.cv-transcode-src.")));
    EXPECT_TRUE(sessions.assets.at(0).endsWith(text(".mov")));
    expectNoTemporaries();
}

TEST_F(AVExportSessionTest, ReadsTheSourceItselfWithoutAGrantAndCreatesTheFolder) {
    job.sourceRoot.identity.reset();
    job.range.reset();
    job.destination = into(at("out/HD/new.mp4"));
    EXPECT_EQ(transcode(), QString());
    EXPECT_EQ(delivered("HD/new.mp4"), FakeSessions::output(ExportPreset::passthrough, bytes));
    EXPECT_EQ(sessions.assets, QStringList{source});
}

TEST_F(AVExportSessionTest, ReportsProgressAtEachIntervalOnTheMainThread) {
    std::binary_semaphore wasReported{0};
    sessions.halfway = [&](const QString &) {
        QMetaObject::invokeMethod(qApp, [&] {
            clock.advance(AVExportSession::kProgressInterval);
            wasReported.release();
        });
        wasReported.acquire();
    };
    EXPECT_EQ(transcode(), QString());
    EXPECT_EQ(fractions, QList<double>{0.5});
    EXPECT_EQ(clock.pendingTimers(), 0);
}

TEST_F(AVExportSessionTest, KeepsTheDestinationAndLeavesNoTemporaryOnFailure) {
    job.range = {12.5, 12.5};
    EXPECT_EQ(transcode(), text("Time range invalid: in=12.5, out=12.5"));
    job.range->outSeconds = 13;
    sessions.canNotCreate = true;
    EXPECT_EQ(transcode(), text("AVAssetExportSession could not be created for clip"));
    sessions.canNotCreate = false;
    sessions.halfway = [](const QString &) { throw Failure(text("No codec.")); };
    EXPECT_EQ(transcode(), text("Export failed: No codec."));
    sessions.halfway = [](const QString &) { throw media::UnsupportedSource(QString()); };
    EXPECT_EQ(transcode(), text("Source asset is not compatible with preset "
                                "AVAssetExportPresetPassthrough"));
    sessions.halfway = [&](const QString &) { stop.request_stop(); };
    EXPECT_EQ(transcode(), text("Cancelled"));
    expectOldDestination();
    sessions.assets.clear();
    EXPECT_EQ(transcode(), text("Cancelled")) << "during the private copy";
    EXPECT_TRUE(sessions.assets.isEmpty());
    expectOldDestination();
}

TEST_F(AVExportSessionTest, RefusesASourceThatDiffersFromItsGrant) {
    folder.write(footage("clip"), "other");
    EXPECT_EQ(transcode(),
              text("clip's contents changed since it was authorized, refusing to transcode "
                   "what was just read: %1. Re-import or relink it, then try again.")
                  .arg(source));
    job.sourceRoot.identity->inode += 1;
    job.sourceRoot.folder = std::make_shared<Descriptor>();
    EXPECT_EQ(transcode(),
              text("The folder clip changed after it was authorized and no longer matches "
                   "what was granted, refusing to read from it: %1. Re-import or relink it, "
                   "then try again.")
                  .arg(source));
    EXPECT_TRUE(sessions.assets.isEmpty());
    expectOldDestination();
}

TEST_F(AVExportSessionTest, RefusesASourceWhosePrivateCopyDoesNotFit) {
    files.setFreeSpace(60'000);
    EXPECT_EQ(
        transcode(),
        text("Export failed: the private copy of the source needs 70.0 kB in the folder %1, where "
             "60.0 kB are free. Make room there, then try again.")
            .arg(at("out")));
    files.setFreeSpace(-1);
    EXPECT_TRUE(sessions.assets.isEmpty());
    expectOldDestination();
}

TEST_F(AVExportSessionTest, RefusesADestinationThatIsNotAFile) {
    job.destination = into(folder.folder("out/folder"));
    const QString refusal =
        text("Something that isn't a file is already at %1. Rename it or pick another export "
             "folder, then run the export again.");
    EXPECT_EQ(transcode(), refusal.arg(text("folder")));
    job.destination = into(folder.link("out/link", destination));
    EXPECT_EQ(transcode(), refusal.arg(text("link")));
    expectOldDestination();
}

TEST_F(AVExportSessionTest, RefusesWithoutAFrameworkBeforeReadingTheSource) {
    sessions.isMissing = true;
    files.failAt(0, 0);
    EXPECT_EQ(transcode(), text("AVAssetExportSession could not be created for clip"));
    EXPECT_EQ(files.calls(), 0);
}
