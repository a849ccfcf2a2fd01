#include "shell/InstanceHandover.h"
#include "ShellFixture.h"
#include "support/TestBus.h"

#include <QDBusAbstractAdaptor>
#include <QLocalSocket>
#include <QSignalSpy>

#include <thread>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;

namespace {

/// Simulates a second process with a thread.
bool handOver(const QString &dataFolder, const QString &file) {
    std::atomic<bool> isDone = false;
    bool isAccepted = false;
    const std::jthread second([&] {
        isAccepted = InstanceHandover::handOver(dataFolder, file, 5s);
        isDone = true;
    });
    waitUntil([&] { return isDone.load(); });
    return isAccepted;
}

} // namespace

TEST(InstanceHandover, ASecondStartPassesItsFileToTheFirst) {
    const TestFolder folder;
    for (const QString &data : {folder.path(), folder.folder(QString(120, QLatin1Char('d')))}) {
        EXPECT_FALSE(InstanceHandover::handOver(data, {}, 1s)) << "no process listens";
        InstanceHandover first(data);
        ASSERT_TRUE(first.isListening());
        QSignalSpy started(&first, &InstanceHandover::startedAgain);
        const QString file = QStringLiteral("/a/line\nbreak ü.corvane");
        EXPECT_TRUE(handOver(data, file));
        EXPECT_TRUE(handOver(data, {}));
        EXPECT_FALSE(handOver(data, QStringLiteral("relative.corvane")));
        ASSERT_EQ(started.count(), 2);
        EXPECT_EQ(started.at(0).at(0).toString(), file);
        EXPECT_EQ(started.at(1).at(0).toString(), QString());
    }
}

TEST(InstanceHandover, DisconnectsInvalidMessagesAndKeepsListening) {
    const TestFolder folder;
    InstanceHandover first(folder.path());
    for (const QByteArray &invalid :
         {QByteArray(100'000, '\x7f'), QByteArray("\0\0\0\2\xff\xfe", 6)}) {
        QLocalSocket peer;
        peer.connectToServer(folder.at("handover"));
        peer.write(invalid);
        waitUntil([&] { return peer.state() == QLocalSocket::UnconnectedState; });
    }
    EXPECT_TRUE(handOver(folder.path(), QStringLiteral("/a.corvane")));
}

namespace {

/// A file browser on the test's bus.
class FileBrowser : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

  public:
    QStringList shown;

  public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &) { shown += uris; }
};

} // namespace

TEST(FileReveal, UsesTheFileBrowserOrOpensTheFolder) {
    const TestBus bus;
    ASSERT_TRUE(bus.isRunning());
    const QString &address = bus.address();
    QUrl opened;
    FileReveal reveal(QDBusConnection::connectToBus(address, QStringLiteral("reveal")),
                      [&](const QUrl &url) {
                          opened = url;
                          return true;
                      });
    const QString file = QStringLiteral("/shoots/ü b.mov");
    reveal.reveal(file);
    waitUntil([&] { return opened.isValid(); });
    EXPECT_EQ(opened.toLocalFile(), QStringLiteral("/shoots"));

    opened.clear();
    FileBrowser browser;
    auto browserBus = QDBusConnection::connectToBus(address, QStringLiteral("browser"));
    ASSERT_TRUE(browserBus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &browser,
                                          QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(browserBus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
    reveal.reveal(file);
    waitUntil([&] { return !browser.shown.isEmpty(); });
    EXPECT_EQ(browser.shown, QStringList(QStringLiteral("file:///shoots/%C3%BC%20b.mov")));
    EXPECT_TRUE(opened.isEmpty());
    QDBusConnection::disconnectFromBus(QStringLiteral("reveal"));
    QDBusConnection::disconnectFromBus(QStringLiteral("browser"));
}

TEST(DialogFilePanels, ShowsOneDialogAtATimeAndAcceptsLocalFilesOnly) {
    DialogFilePanels dialogs;
    QSignalSpy requested(&dialogs, &DialogFilePanels::dialogRequested);
    QStringList chosen;
    const auto note = [&](const QString &path) { chosen.append(path); };
    dialogs.openProjectFile(note);
    dialogs.openProjectFile(note);
    EXPECT_EQ(requested.count(), 1);
    EXPECT_EQ(dialogs.nameFilters(), QStringList(QStringLiteral("Corvane projects (*.corvane)")));
    dialogs.accept({QUrl::fromLocalFile(QStringLiteral("/shoots/x/../a.corvane"))});
    dialogs.save({.message = QStringLiteral("Where?"), .proposedName = QStringLiteral("New")},
                 note);
    EXPECT_EQ(dialogs.proposedFile().toLocalFile(), QStringLiteral("/shoots/New"));
    EXPECT_EQ(dialogs.title(), QStringLiteral("Where?"));
    dialogs.reject();
    dialogs.accept({QUrl::fromLocalFile(QStringLiteral("/late"))});
    dialogs.openProjectFile(note);
    dialogs.accept({QUrl(QStringLiteral("https://a.example/a.corvane"))});
    EXPECT_EQ(chosen, QStringList(QStringLiteral("/shoots/a.corvane")));
    dialogs.chooseFiles({}, [&](const QStringList &paths) { chosen = paths; });
    dialogs.accept({QUrl::fromLocalFile(QStringLiteral("/card/a.mov")),
                    QUrl::fromLocalFile(QStringLiteral("/card/b.mov"))});
    EXPECT_EQ(chosen, QStringList({QStringLiteral("/card/a.mov"), QStringLiteral("/card/b.mov")}));
    dialogs.chooseFolder({.message = QStringLiteral("To?")}, note);
    EXPECT_EQ(dialogs.kind(), DialogFilePanels::Kind::OpenFolder);
    EXPECT_EQ(dialogs.folder().toLocalFile(), QStringLiteral("/card"));
}

#include "DesktopTest.moc"
