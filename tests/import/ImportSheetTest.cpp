#include "import/ImportTexts.h"
#include "ImportSheetFixture.h"

#include <QAbstractItemModelTester>
#include <QDeadlineTimer>
#include <QSignalSpy>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;

namespace {

using SheetStage = ImportSheet::Stage;

class ImportSheetTest : public ImportSheetFixture {
  protected:
    void write(const char *path, qsizetype bytes = 100) const {
        folder.write(QString::fromLatin1(path), noise(bytes, quint32(qHash(QByteArray(path)))));
    }
    void waitFor(SheetStage stage) {
        const QDeadlineTimer deadline(20'000);
        while (flow.stage() != stage && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        EXPECT_EQ(flow.stage(), stage);
    }
    void scanCards(SourceImportMode mode) {
        flow.openWith({cards});
        flow.scan();
        waitFor(SheetStage::Results);
        flow.setMode(int(mode));
    }
    QVariant row(int row, ImportRowList::Role role) {
        return flow.rowsObject()->data(flow.rowsObject()->index(row), role);
    }
    QStringList counterTexts() const {
        QStringList texts;
        const QVariantList counters = flow.counters();
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

TEST_F(ImportSheetTest, AddsEachSourceOnceAndTellsWhatCanNotBeAdded) {
    const QAbstractItemModelTester tester(flow.sourcesObject());
    flow.open();
    write("a.mov");
    panels.paths = {cards, at(utf8("a.mov")), cards + utf8("/../cards/")};
    flow.chooseFiles();
    flow.chooseFolder();
    EXPECT_EQ(import.sourceURLs(), (QStringList{cards, at(utf8("a.mov"))}));
    EXPECT_EQ(flow.sourcesObject()->index(0).data(ImportSourceList::SymbolRole), utf8("folder"));
    EXPECT_EQ(flow.sourcesObject()->index(1).data(ImportSourceList::SymbolRole), utf8("file"));
    flow.addDropped({QUrl(utf8("https://a.example/b.mov")), QUrl::fromLocalFile(at(utf8("p")))});
    EXPECT_EQ(flow.sourcesNotice(),
              utf8("Only files and folders of this computer can be imported."));
    EXPECT_EQ(flow.sourcesObject()->count(), 3);
    flow.removeSource(1);
    EXPECT_EQ(import.sourceURLs(), (QStringList{cards, at(utf8("p"))}));
    flow.removeSource(7);
    flow.removeSource(1);
    flow.removeSource(0);
    EXPECT_FALSE(flow.canScan());
    flow.open();
    EXPECT_EQ(flow.sourcesNotice(), QString());
}

TEST_F(ImportSheetTest, GoesBackAndAwayByEsc) {
    write("cards/a.mov");
    QSignalSpy dismissed(&flow, &ImportSheet::dismissed);
    flow.openWith({cards});
    EXPECT_EQ(flow.backText(), utf8("Back"));
    flow.scan();
    EXPECT_EQ(flow.stage(), SheetStage::Scanning);
    flow.escape();
    EXPECT_EQ(flow.stage(), SheetStage::Sources);
    flow.scan();
    waitFor(SheetStage::Results);
    EXPECT_EQ(flow.title(), utf8("Import Footage — Results"));
    flow.escape();
    EXPECT_EQ(flow.stage(), SheetStage::Sources);
    EXPECT_EQ(import.sourceURLs(), QStringList(cards));
    flow.scan();
    waitFor(SheetStage::Results);
    flow.openWith({at(utf8("p"))});
    EXPECT_EQ(import.sourceURLs(), (QStringList{cards, at(utf8("p"))}));
    flow.escape();
    EXPECT_EQ(dismissed.count(), 1);
    EXPECT_FALSE(flow.isOpen());
    flow.open();
    EXPECT_TRUE(import.sourceURLs().isEmpty());
}

TEST_F(ImportSheetTest, ShowsEachRowAndKeepsTheListWhenOneChanges) {
    write("cards/a.mov");
    write("cards/a.xml");
    write("cards/b.mov", 2'500'000);
    write("cards/c.mov");
    write("p/media/a.mov");
    scanCards(SourceImportMode::inPlace);
    flow.toggleRow(0);
    flow.toggleRow(1);
    flow.beginImport();
    waitFor(SheetStage::Done);
    flow.importMore();

    const QAbstractItemModelTester tester(flow.rowsObject());
    scanCards(SourceImportMode::inPlace);
    EXPECT_EQ(flow.foundText(), utf8("Found 3 videos"));
    EXPECT_EQ(flow.foundNote(), utf8(" · 1 already imported."));
    EXPECT_EQ(flow.destinationName(), QString());
    QSignalSpy reset(flow.rowsObject(), &QAbstractItemModel::modelReset);
    flow.toggleRow(1);
    flow.toggleRow(2); // imported already
    EXPECT_EQ(flow.includedText(), utf8("1 included"));
    EXPECT_FALSE(row(1, ImportRowList::IncludedRole).toBool());
    flow.setMode(int(SourceImportMode::copied));
    EXPECT_EQ(flow.includedText(), utf8("2 included"));
    EXPECT_TRUE(row(1, ImportRowList::IncludedRole).toBool());
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(flow.destinationName(), utf8("media folder"));
    EXPECT_EQ(flow.destinationNote(), QString()) << "it is there";

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
    EXPECT_EQ(flow.rowsObject()->nextToggleable(1, 1), -1);
    EXPECT_EQ(flow.rowsObject()->toggleableNear(2), 1);
    EXPECT_EQ(flow.rowsObject()->toggleableNear(-5), 0);
}

TEST_F(ImportSheetTest, TellsWhereARunStandsAndNeverGoesBack) {
    write("cards/a.mov", 6'000'000);
    write("cards/b.mov", 2'000'000);
    write("cards/c.mov", 4'000'000);
    scanCards(SourceImportMode::copied);
    flow.toggleRow(1);
    EXPECT_TRUE(folder.names(utf8("p/media")).isEmpty());
    EXPECT_EQ(flow.destinationNote(), utf8("(created on import)"));
    QStringList seen;
    double reached = 0;
    QObject::connect(&flow, &ImportSheet::runningChanged, &flow, [&] {
        clock.advance(4s);
        EXPECT_GE(flow.fraction(), reached);
        reached = flow.fraction();
        const QString line = flow.figure() + utf8(" ") + flow.fileName();
        if (!seen.contains(line)) {
            seen.append(line);
        }
        if (flow.fileName() == utf8("c.mov")) {
            EXPECT_TRUE(flow.details().endsWith(utf8(" / 4.0 MB")));
            EXPECT_TRUE(flow.timeLeft().startsWith(utf8("About")));
        }
        flow.dismiss();
    });
    flow.beginImport();
    waitFor(SheetStage::Done);
    EXPECT_THAT(seen, testing::ElementsAre(utf8("0 / 2 "), utf8("1 / 2 a.mov"), utf8("2 / 2 c.mov"),
                                           utf8("2 / 2 Recording what was imported…"),
                                           utf8("1 / 2 Reading metadata: a.mov"),
                                           utf8("2 / 2 Reading metadata: c.mov")));
    EXPECT_GT(reached, 0.5);
    EXPECT_TRUE(flow.isOpen());
    EXPECT_EQ(counterTexts(), (QStringList{utf8("2 imported"), utf8("1 skipped")}));
    EXPECT_EQ(flow.doneNotice(), QString());
}

TEST_F(ImportSheetTest, CancelsOnceAndTellsWhatWasLeft) {
    for (const char *path : {"cards/a.mov", "cards/b.mov", "cards/c.mov"}) {
        write(path);
    }
    scanCards(SourceImportMode::copied);
    HeldCopy held(utf8("b.mov"));
    QObject::connect(&flow, &ImportSheet::runningChanged, &flow, [&] {
        if (flow.fileName() == utf8("b.mov") && flow.canCancel()) {
            flow.escape();
            EXPECT_EQ(flow.cancelText(), utf8("Cancelling…"));
            EXPECT_FALSE(flow.canDismiss());
            flow.openWith({at(utf8("p"))});
            held.letGo();
        }
    });
    flow.beginImport();
    waitFor(SheetStage::Done);
    EXPECT_EQ(flow.doneNotice(), utf8("Cancelled. 2 videos were not imported."));
    EXPECT_EQ(counterTexts(), QStringList(utf8("1 imported")));
    EXPECT_EQ(folder.names(utf8("p/media")), QStringList(utf8("a.mov")));
    flow.importMore();
    EXPECT_EQ(import.sourceURLs(), QStringList(at(utf8("p"))));
}

TEST(ImportTexts, TellInPlainWordsWhatIsLeftOutAndWhatMustBeConfirmed) {
    EXPECT_EQ(leftOutText({}), QString());
    EXPECT_EQ(leftOutText({.notMedia = 1, .unreadable = 2}),
              utf8("Left out: 1 file that isn't a video or audio file, 2 files or folders that "
                   "can't be read"));
    EXPECT_EQ(refusedText(0), QString());
    EXPECT_TRUE(refusedText(1).startsWith(utf8("1 file already imported can't be read")));
    EXPECT_EQ(cancelledText(1), utf8("Cancelled. 1 video was not imported."));
}
