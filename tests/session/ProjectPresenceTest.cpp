#include "session/ProjectPresence.h"
#include "support/Await.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QSysInfo>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;
using DocumentLock::Holder;

namespace {

class ProjectPresenceTest : public testing::Test {
  protected:
    QString make(const QString &name) {
        const QString path = folder.at(name);
        await(io.save(sampleProject(1), path, false));
        return path;
    }
    Holder other(std::chrono::milliseconds age = 0ms) {
        const QDateTime renewedAt = clock.now().addMSecs(-age.count());
        return {.host = QStringLiteral("STUDIO-2"),
                .user = QStringLiteral("Anna"),
                .openedAt = renewedAt,
                .renewedAt = renewedAt,
                .process = 1,
                .session = QStringLiteral("theirs")};
    }

    TestFolder folder;
    TestClock clock;
    ProjectFileIO io;
    ProjectRegistry registry{folder.at("data"), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{folder.at("data")};
    ProjectStore store{io, registry, backups, authorization, clock};
    QString file = make(QStringLiteral("Harbor.corvane"));
};

} // namespace

TEST_F(ProjectPresenceTest, RecognizesTheLockOfAnotherLiveSession) {
    const auto nobody = qint64(1) << 30; // above the highest process id
    Holder ended = other();
    ended.host = QSysInfo::machineHostName();
    ended.process = nobody;
    Holder running = ended;
    running.process = QCoreApplication::applicationPid();
    Holder own = other();
    own.session = QStringLiteral("ours");
    const std::pair<Holder, bool> holders[] = {
        {other(), true}, {other(9min), true}, {other(10min), false},
        {ended, false},  {running, true},     {own, false},
    };
    for (const auto &[holder, isOther] : holders) {
        DocumentLock::write(file, holder);
        EXPECT_EQ(DocumentLock::otherHolder(file, QStringLiteral("ours"), clock.now()),
                  isOther ? std::optional(holder) : std::nullopt);
    }
    folder.write(".Harbor.corvane.lock", "{}");
    EXPECT_FALSE(DocumentLock::otherHolder(file, {}, clock.now()));
    const QString linked = folder.write("other.json", encodeJSON(running));
    QFile::remove(DocumentLock::pathFor(file));
    folder.link(".Harbor.corvane.lock", linked);
    DocumentLock::write(file, own);
    EXPECT_EQ(folder.read("other.json"), encodeJSON(running)) << "links are not followed";
    EXPECT_FALSE(DocumentLock::otherHolder(file, {}, clock.now()));
}

TEST_F(ProjectPresenceTest, HoldsTheLockWhileTheProjectIsOpen) {
    const QString link = folder.link("Link.corvane", file);
    const auto holder = [&] { return DocumentLock::otherHolder(file, {}, clock.now()); };
    {
        ProjectPresence presence(store);
        await(store.openProject(link));
        waitUntil([&] { return holder().has_value(); });
        const auto first = *holder();
        EXPECT_EQ(first.host, QSysInfo::machineHostName());
        EXPECT_EQ(first.openedAt, clock.now());
        waitUntil([&] { return clock.pendingTimers() > 0; });
        clock.advance(DocumentLock::kRenewalInterval);
        waitUntil([&] { return holder()->renewedAt == clock.now(); });
        EXPECT_EQ(holder()->openedAt, first.openedAt);
        EXPECT_FALSE(presence.otherHolder());
        await(store.closeProject());
        waitUntil([&] { return !holder(); });
        await(store.openProject(file));
        waitUntil([&] { return holder().has_value(); });
    }
    EXPECT_FALSE(holder()) << "released when the program ends";
}

TEST_F(ProjectPresenceTest, ReportsAnotherSessionAndTakesOverWhenItEnds) {
    DocumentLock::write(file, other());
    ProjectPresence presence(store);
    await(store.openProject(file));
    waitUntil([&] { return presence.otherHolder().has_value(); });
    EXPECT_EQ(presence.otherHolder(), other());
    DocumentLock::release(file, QStringLiteral("theirs"));
    clock.advance(DocumentLock::kRenewalInterval);
    waitUntil([&] { return !presence.otherHolder(); });
    EXPECT_TRUE(DocumentLock::otherHolder(file, {}, clock.now()));
}
