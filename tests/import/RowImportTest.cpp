#include "import/RowImport.h"

#include "ImportSheetFixture.h"
#include "trust/ContentHasher.h"

#include <QDir>
#include <QFile>

using namespace corvane;
using corvane::test::await;
using corvane::test::FaultyFileSystem;

namespace {

/// Copies from "cards" to the project's media folder.
class RowImportTest : public test::ImportTest {
  protected:
    QList<ImportPreviewRow> preview(const char *source = "cards") {
        import.reset();
        import.setSources({at(source)});
        import.setMode(SourceImportMode::copied);
        await(import.startScan());
        return import.previewRows();
    }

    QString media = at("p/media");
};

} // namespace

TEST_F(RowImportTest, NeverReplacesAFileThatAppearsDuringTheCopy) {
    folder.write("cards/a.mov", "video");
    folder.write("cards/a.xml", "sidecar");
    (void)preview();
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    faulty.setObserver([&](const QString &operation, const QString &path) {
        const bool isTaken = path == at("p/media/a.mov") || path == at("p/media/a (2).xml");
        if (operation == QLatin1String("renameAt") && isTaken) {
            QFile taken(path);
            EXPECT_TRUE(taken.open(QIODevice::WriteOnly));
            taken.write("foreign");
        }
    });
    await(import.beginImport());
    EXPECT_EQ(folder.read("p/media/a.mov"), "foreign");
    EXPECT_EQ(folder.read("p/media/a (2).mov"), "video");
    EXPECT_EQ(folder.read("p/media/a (2).xml"), "foreign");
    EXPECT_EQ(folder.read("p/media/a (2) (2).xml"), "sidecar");
    const QString copy = store.project()->videos.first()->sourcePath;
    EXPECT_EQ(copy, at("p/media/a (2).mov"));
    const auto grant = await(authorization.authorizedPaths(projectFile)).value(copy);
    ASSERT_TRUE(grant && grant->contentHash);
    EXPECT_EQ(ContentHasher::verifyAnchor(*grant->contentHash, copy),
              ContentHasher::AnchorVerification::matches);
}

TEST_F(RowImportTest, CopiesNothingToAFolderThatTookThePlaceOfTheDestination) {
    for (const char *name : {"cards/a.mov", "cards/a.xml", "cards/b.mov"}) {
        folder.write(name, name);
    }
    const QList<ImportPreviewRow> rows = preview();
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    for (const bool isLink : {false, true}) {
        for (int call = 1;; ++call) {
            for (const char *name : {"p/media", "p/media.away"}) {
                QDir(at(name)).removeRecursively();
            }
            const OpenFolder destination = RowImport::openDestination(media);
            const QString other =
                isLink ? folder.link("other", folder.folder("elsewhere")) : folder.folder("other");
            faulty.swapAt(call, media, other);
            for (const ImportPreviewRow &row : rows) {
                const auto outcome = RowImport::copyFiles(row, destination, {}, {});
                if (!outcome.sourcePath) {
                    EXPECT_EQ(outcome.failures.first().message,
                              DestinationLost(media).description());
                }
            }
            faulty.failAt(0, 0);
            if (!folder.has("p/media.away")) {
                QDir().rmdir(other);
                break;
            }
            EXPECT_THAT(folder.names("p/media"), testing::IsEmpty()) << call;
            EXPECT_THAT(folder.names("elsewhere"), testing::IsEmpty()) << call;
            QFile::remove(media);
        }
    }
}

TEST_F(RowImportTest, CopiesOnlyWhatWasPreviewedIfTheFolderAboveIsSwapped) {
    for (const char *name : {"a.mov", "b.mov"}) {
        folder.write(QStringLiteral("cards/x/") + QString::fromLatin1(name), "granted");
    }
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    int refused = 0;
    const int swaps = 40; // more than a scan makes calls
    for (int call = 1; call < swaps; ++call) {
        for (const char *name : {"a.mov", "b.mov"}) {
            folder.write(QStringLiteral("other/x/") + QString::fromLatin1(name), "foreign");
        }
        faulty.swapAt(call, at("cards"), at("other"));
        const QList<ImportPreviewRow> rows = preview("cards/x");
        faulty.failAt(0, 0);
        if (folder.has("cards.away")) { // swapped back before the copies
            ASSERT_TRUE(QDir().rename(at("cards"), at("other")));
            ASSERT_TRUE(QDir().rename(at("cards.away"), at("cards")));
        }
        const OpenFolder destination = RowImport::openDestination(media);
        for (const ImportPreviewRow &row : rows) {
            const auto outcome = RowImport::copyFiles(row, destination, {}, {});
            EXPECT_TRUE(!outcome.sourcePath ||
                        ContentHasher::duplicateKey(*outcome.sourcePath) == row.source.contentHash);
            refused += outcome.sourcePath ? 0 : 1;
        }
    }
    EXPECT_GT(refused, 0);
}
