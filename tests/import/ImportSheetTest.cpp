#include "import/ImportTexts.h"
#include "ImportSheetFixture.h"
#include "support/TestPlayer.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;

namespace {

using Stage = ImportViewModel::Stage;

class ImportSheetTest : public ImportSheetFixture {
  protected:
    void write(const char *path, qsizetype bytes = 100) const {
        folder.write(path, noise(bytes, quint32(qHash(QByteArray(path)))));
    }
    void waitFor(Stage stage) {
        EXPECT_TRUE(eventually([&] { return sheet.stage() == stage; }));
    }
    void scanCards(SourceImportMode mode) {
        sheet.openWith({cards});
        sheet.scan();
        waitFor(Stage::results);
        sheet.setMode(int(mode));
    }
    QVariant row(int row, ImportRowList::Role role) {
        return sheet.rows()->data(sheet.rows()->index(row), role);
    }
    QStringList counterTexts() const {
        QStringList texts;
        const QVariantList counters = sheet.result().counters;
        for (const QVariant &counter : counters) {
            texts.append(counter.toMap().value(QStringLiteral("text")).toString());
        }
        return texts;
    }
};

QString utf8(const char *text) {
    return QString::fromUtf8(text);
}

} // namespace

TEST_F(ImportSheetTest, AddsEachSourceOnceAndExplainsWhatCannotBeAdded) {
    const QAbstractItemModelTester tester(sheet.sources());
    sheet.open();
    write("a.mov");
    panels.answer = cards;
    panels.files = {cards, at("a.mov"), cards + utf8("/../cards/")};
    sheet.sources()->chooseFiles();
    sheet.sources()->chooseFolder();
    EXPECT_EQ(import.sourceURLs(), (QStringList{cards, at("a.mov")}));
    EXPECT_EQ(sheet.sources()->index(0).data(ImportSourceList::SymbolRole), utf8("folder"));
    EXPECT_EQ(sheet.sources()->index(1).data(ImportSourceList::SymbolRole), utf8("file"));
    sheet.sources()->addDropped(
        {QUrl(utf8("https://a.example/b.mov")), QUrl::fromLocalFile(at("p"))});
    EXPECT_EQ(sheet.sources()->notice(),
              utf8("Only files and folders of this computer can be imported."));
    EXPECT_EQ(sheet.sources()->count(), 3);
    sheet.sources()->remove(1);
    EXPECT_EQ(import.sourceURLs(), (QStringList{cards, at("p")}));
    sheet.sources()->remove(7);
    sheet.sources()->remove(1);
    sheet.sources()->remove(0);
    EXPECT_FALSE(sheet.canScan());
    sheet.open();
    EXPECT_EQ(sheet.sources()->notice(), QString());
}

TEST_F(ImportSheetTest, EscGoesBackOneStageOrCloses) {
    write("cards/a.mov");
    sheet.openWith({cards});
    EXPECT_EQ(sheet.backText(), utf8("Back"));
    sheet.scan();
    EXPECT_EQ(sheet.stage(), Stage::scanning);
    sheet.escape();
    EXPECT_EQ(sheet.stage(), Stage::sources);
    sheet.scan();
    waitFor(Stage::results);
    EXPECT_EQ(sheet.title(), utf8("Import Footage — Results"));
    sheet.escape();
    EXPECT_EQ(sheet.stage(), Stage::sources);
    EXPECT_EQ(import.sourceURLs(), QStringList(cards));
    sheet.scan();
    waitFor(Stage::results);
    sheet.openWith({at("p")});
    EXPECT_EQ(import.sourceURLs(), (QStringList{cards, at("p")}));
    sheet.escape();
    EXPECT_FALSE(sheet.isOpen());
    sheet.open();
    EXPECT_TRUE(import.sourceURLs().isEmpty());
}

TEST_F(ImportSheetTest, ShowsEachRowAndReportsOnlyChangedRows) {
    write("cards/a.mov");
    write("cards/a.xml");
    write("cards/b.mov", 2'500'000);
    write("cards/c.mov");
    write("p/media/a.mov");
    scanCards(SourceImportMode::inPlace);
    sheet.toggleRow(0);
    sheet.toggleRow(1);
    sheet.beginImport();
    waitFor(Stage::done);
    sheet.startAgain();

    const QAbstractItemModelTester tester(sheet.rows());
    scanCards(SourceImportMode::inPlace);
    EXPECT_EQ(sheet.preview().found, utf8("Found 3 videos"));
    EXPECT_EQ(sheet.preview().alreadyImported, utf8(" · 1 already imported."));
    EXPECT_EQ(sheet.preview().destination, QString());
    QSignalSpy reset(sheet.rows(), &QAbstractItemModel::modelReset);
    sheet.toggleRow(1);
    sheet.toggleRow(2); // imported already
    EXPECT_EQ(sheet.preview().included, utf8("1 included"));
    EXPECT_FALSE(row(1, ImportRowList::IncludedRole).toBool());
    sheet.setMode(int(SourceImportMode::copied));
    EXPECT_EQ(sheet.preview().included, utf8("2 included"));
    EXPECT_TRUE(row(1, ImportRowList::IncludedRole).toBool());
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(sheet.preview().destination, utf8("media folder"));
    EXPECT_EQ(sheet.preview().destinationNote, QString()) << "the folder exists";

    EXPECT_EQ(row(0, ImportRowList::NameRole), utf8("a.mov"));
    EXPECT_EQ(row(0, ImportRowList::ProposedNameRole), utf8("a (2).mov"));
    EXPECT_EQ(row(0, ImportRowList::BadgeRole), utf8("renamed"));
    EXPECT_EQ(row(0, ImportRowList::SidecarTextRole), utf8("+ sidecar"));
    EXPECT_EQ(row(0, ImportRowList::SummaryRole),
              utf8("renamed to a (2).mov, with sidecar, 100 bytes"));
    EXPECT_EQ(row(1, ImportRowList::ProposedNameRole), QString());
    EXPECT_EQ(row(1, ImportRowList::SizeTextRole), utf8("2.5 MB"));
    EXPECT_EQ(row(2, ImportRowList::BadgeRole), utf8("already imported"));
    EXPECT_FALSE(row(2, ImportRowList::CanToggleRole).toBool());
    EXPECT_EQ(sheet.rows()->nextToggleable(1, 1), -1);
    EXPECT_EQ(sheet.rows()->toggleableNear(2), 1);
    EXPECT_EQ(sheet.rows()->toggleableNear(-5), 0);
}

TEST_F(ImportSheetTest, ReportsProgressThatNeverDecreases) {
    write("cards/a.mov", 6'000'000);
    write("cards/b.mov", 2'000'000);
    write("cards/c.mov", 4'000'000);
    scanCards(SourceImportMode::copied);
    sheet.toggleRow(1);
    EXPECT_TRUE(folder.names("p/media").isEmpty());
    EXPECT_TRUE(
        eventually([&] { return sheet.preview().destinationNote == utf8("(created on import)"); }));
    QStringList seen;
    double reached = 0;
    QObject::connect(&sheet, &ImportSheet::runChanged, &sheet, [&] {
        clock.advance(4s);
        EXPECT_GE(sheet.run().fraction, reached);
        reached = sheet.run().fraction;
        const QString line = sheet.run().figure + utf8(" ") + sheet.run().fileName;
        if (!seen.contains(line)) {
            seen.append(line);
        }
        if (sheet.run().fileName == utf8("c.mov")) {
            EXPECT_TRUE(sheet.run().details.endsWith(utf8(" / 4.0 MB")));
            EXPECT_TRUE(sheet.run().timeLeft.startsWith(utf8("About")));
        }
        sheet.dismiss();
    });
    sheet.beginImport();
    waitFor(Stage::done);
    EXPECT_THAT(seen, testing::ElementsAre(utf8("0 / 2 "), utf8("1 / 2 a.mov"), utf8("2 / 2 c.mov"),
                                           utf8("2 / 2 Recording what was imported…"),
                                           utf8("1 / 2 Reading metadata: a.mov"),
                                           utf8("2 / 2 Reading metadata: c.mov")));
    EXPECT_GT(reached, 0.5);
    EXPECT_TRUE(sheet.isOpen());
    EXPECT_EQ(counterTexts(), (QStringList{utf8("2 imported"), utf8("1 skipped")}));
    EXPECT_EQ(sheet.result().notice, QString());
}

TEST(ImportTexts, CountWhatWasLeftOutAndWhatNeedsConfirmation) {
    EXPECT_EQ(leftOutText({}), QString());
    EXPECT_EQ(leftOutText({.notMedia = 1, .unreadable = 2}),
              utf8("Left out: 1 file that isn't a video or audio file, 2 files or folders that "
                   "can't be read"));
    EXPECT_EQ(refusedText(0), QString());
    EXPECT_TRUE(refusedText(1).startsWith(utf8("1 file already imported can't be read")));
    EXPECT_EQ(cancelledText(1, 0), utf8("Cancelled. 1 video was not imported."));
    EXPECT_EQ(cancelledText(0, 2),
              utf8("Cancelled. Clips whose metadata wasn't read yet stay without it. 2 imported "
                   "clips were not read to the end, so the banner over the review asks about "
                   "them."));
}
