#pragma once

#include "document/ProjectFileIO.h"
#include "shell/CorvaneApp.h"
#include "support/Await.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"
#include "support/TestPanels.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace corvane::test {

/// Keeps what is logged while it lives, each line as "category: text".
class LogCapture {
  public:
    LogCapture() { s_lines.clear(); }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY_MOVE(LogCapture)

    static const QStringList &lines() { return s_lines; }

  private:
    static void keep(QtMsgType, const QMessageLogContext &context, const QString &text) {
        s_lines.append(QLatin1String(context.category) + QStringLiteral(": ") + text);
    }

    static inline QStringList s_lines;
    QtMessageHandler m_previous = qInstallMessageHandler(keep);
};

/// Runs the event loop until it holds; what never comes ends as a failure.
inline void waitUntil(const std::function<bool()> &holds) {
    const QDeadlineTimer deadline(20'000);
    QTimer wakes;
    wakes.start(5);
    while (!holds() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
    EXPECT_TRUE(holds());
}

/// The program without its windows, on data and a folder of the test's own.
class ShellTest : public testing::Test {
  protected:
    explicit ShellTest(CorvaneApp::MakeProjectScreen makeProjectScreen = {})
        : app({.dataFolder = folder.at(QStringLiteral("data")),
               .updates = {.version = QStringLiteral("1.0.0")},
               .panels = &panels,
               .clock = &clock,
               .userDefaults = std::make_unique<QSettings>(
                   folder.at(QStringLiteral("defaults.ini")), QSettings::IniFormat),
               .hashes = ContentHashMigration::Awaited,
               .makeProjectScreen = std::move(makeProjectScreen)}) {
        await(app.store().waitForStartUp());
    }

    QString make(const QString &name, const Project &project) {
        const QString path = folder.at(name);
        await(ProjectFileIO().save(project, path, false));
        return path;
    }
    void open(const QString &file) { await(app.store().openProject(file)); }
    /// What the alert says; nothing while there is none.
    QString alert() { return app.router()->hasError() ? app.router()->errorMessage() : QString(); }
    AppCommand &command(const char *id) { return *app.commands()->command(QLatin1String(id)); }

    TestFolder folder;
    TestClock clock;
    TestPanels panels;
    CorvaneApp app;
};

} // namespace corvane::test
