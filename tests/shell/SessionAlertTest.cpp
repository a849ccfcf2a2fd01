#include "ShellFixture.h"
#include "support/FaultyFileSystem.h"

using namespace corvane;
using namespace corvane::test;

namespace {

using Answer = SessionAlert::Answer;

class SessionAlertTest : public ShellTest {
  protected:
    SessionAlert &question = *app.sessionAlert();
    ProjectStore &store = app.store();
    QString file = make(QStringLiteral("Harbor.corvane"), sampleProject(2));
    const QString clip = QStringLiteral("clip-0");

    QString text(const char *key) const {
        return question.subject().toMap().value(QLatin1String(key)).toString();
    }
    /// Title, labels of the further choices, cancel and accept button, in one line.
    std::string shown() const {
        if (question.subject().isNull()) {
            return {};
        }
        QStringList parts{text("title")};
        for (const QVariant &choice :
             question.subject().toMap().value(QStringLiteral("choices")).toList()) {
            parts.append(choice.toMap().value(QStringLiteral("label")).toString());
        }
        parts.append({text("cancelText"), text("acceptText")});
        parts.removeAll(QString());
        return parts.join(QStringLiteral(" | ")).toStdString();
    }
    /// Edits the clip and saves.
    void edit(int rating) {
        store.setRating(clip, rating);
        await(store.flushPendingSave());
    }
    void changeElsewhere(const QString &notes) {
        Project foreign = ProjectFileIO::loadNow(file);
        foreign.notes = notes;
        make(QStringLiteral("Harbor.corvane"), foreign);
    }
    int ratingIn(const QString &path) const {
        return ProjectFileIO::loadNow(path).videos.at(0)->rating;
    }
};

} // namespace

TEST_F(SessionAlertTest, OffersThreeWaysOutOfAForeignChange) {
    open(file);
    edit(1);
    const auto conflict = [this](int rating) {
        changeElsewhere(QString::number(rating));
        edit(rating);
        EXPECT_EQ(shown(), "\"Harbor\" was changed by another program | Reload | Save a Copy… | "
                           "Overwrite | Decide Later");
        EXPECT_FALSE(app.router()->hasError()) << "one alert only";
    };
    conflict(2);
    EXPECT_EQ(app.header()->notice(), QStringLiteral("Unsaved changes"));
    question.accept();
    EXPECT_EQ(shown(), "");
    command("saveProject").trigger();
    waitUntil([&] { return !shown().empty(); });
    question.choose(int(Answer::Reload));
    waitUntil([&] { return !store.isDirty(); });
    EXPECT_EQ(store.project()->notes, QStringLiteral("2"));
    EXPECT_EQ(store.project()->videos.at(0)->rating, 1);
    EXPECT_EQ(app.header()->notice(), QString());

    conflict(3);
    panels.answer = folder.at(QStringLiteral("Mine"));
    question.choose(int(Answer::SaveCopy));
    waitUntil([&] { return !store.isDirty(); });
    EXPECT_EQ(panels.asked.proposedName, QStringLiteral("Harbor copy.corvane"));
    EXPECT_EQ(ratingIn(folder.at(QStringLiteral("Mine.corvane"))), 3);
    EXPECT_EQ(store.fileURL(), file);
    EXPECT_EQ(store.project()->notes, QStringLiteral("3"));

    conflict(4);
    question.choose(int(Answer::Overwrite));
    waitUntil([&] { return !store.isDirty(); });
    EXPECT_EQ(ratingIn(file), 4);
    EXPECT_FALSE(store.lastError());
}

TEST_F(SessionAlertTest, LeadsOutOfAProjectThatCannotBeSaved) {
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    open(file);
    edit(1);
    EXPECT_FALSE(command("closeWithoutSaving").isEnabled());
    files.setFreeSpace(0);
    edit(2);
    const std::string failed = "Project error | Save a Copy… | Close Without Saving | OK";
    EXPECT_EQ(shown(), failed);
    EXPECT_TRUE(text("text").startsWith(store.lastError()->description()));
    panels.answer = folder.at(QStringLiteral("Copy.corvane"));
    question.choose(int(Answer::SaveCopy));
    waitUntil([&] { return store.lastError().has_value(); });
    EXPECT_TRUE(alert().startsWith(QStringLiteral("Copy failed: Failed to write ")));
    app.router()->dismissError();

    command("closeProject").trigger();
    waitUntil([&] { return shown() == failed; });
    question.choose(int(Answer::CloseWithoutSaving));
    const std::string confirmation = "Close without saving? | Cancel | Close Without Saving";
    EXPECT_EQ(shown(), confirmation);
    question.cancel();
    EXPECT_EQ(shown(), "");
    EXPECT_TRUE(store.isDirty());
    EXPECT_FALSE(app.closeWindow());
    EXPECT_EQ(shown(), "Quit without saving? | Cancel | Quit Without Saving");
    question.cancel();
    command("closeWithoutSaving").trigger();
    EXPECT_EQ(shown(), confirmation);
    files.setFreeSpace(-1);
    store.setRating(clip, 3); // an autosave is due
    question.accept();
    waitUntil([&] { return !store.project(); });
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(ratingIn(file), 1);
}

TEST_F(SessionAlertTest, AsksOnceWhetherToEditAProjectThatIsOpenElsewhere) {
    const DocumentLock::Holder holder{.host = QStringLiteral("STUDIO-2"),
                                      .user = QStringLiteral("Anna"),
                                      .openedAt = clock.now(),
                                      .renewedAt = clock.now(),
                                      .process = 1,
                                      .session = QStringLiteral("theirs")};
    DocumentLock::write(file, holder);
    open(file);
    waitUntil([&] { return !shown().empty(); });
    EXPECT_EQ(shown(), "Open on STUDIO-2 | Close Project | Edit Anyway");
    question.accept();
    EXPECT_EQ(app.header()->notice(), QStringLiteral("Open on STUDIO-2"));
    await(store.closeProject());
    EXPECT_EQ(app.header()->notice(), QString());
    open(file);
    waitUntil([&] { return !shown().empty(); });
    question.cancel();
    waitUntil([&] { return !store.project(); });
    EXPECT_TRUE(DocumentLock::otherHolder(file, {}, clock.now())) << "it keeps its lock";
}

TEST_F(SessionAlertTest, WarnsBeforeTheFileIsTooLargeToBeSaved) {
    Project project = sampleProject(1);
    const auto notice = [&](qsizetype size) {
        project.notes = QString(size, QLatin1Char('x'));
        open(make(QStringLiteral("Large.corvane"), project));
        return app.header()->notice().toStdString();
    };
    const qsizetype limit = ProjectFileIO::kFileLimit;
    EXPECT_EQ(notice(limit * 79 / 100), "");
    EXPECT_EQ(notice(limit * 81 / 100), "81 % full");
    EXPECT_TRUE(
        app.header()->noticeHelp().startsWith(QStringLiteral("The project's file is 81 % full. ")));
}
