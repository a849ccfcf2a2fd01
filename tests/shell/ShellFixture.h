#pragma once

#include "document/ProjectFileIO.h"
#include "shell/CorvaneApp.h"
#include "support/Await.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"
#include "support/TestPanels.h"

#include <gmock/gmock.h>

namespace corvane::test {

/// Captures log lines during its lifetime, as "category: text".
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

/// The application without its windows, with a data folder for each test.
class ShellTest : public testing::Test {
  protected:
    explicit ShellTest(CorvaneApp::MakeProjectScreen makeProjectScreen = {})
        : app({.dataFolder = folder.at("data"),
               .updates = {.version = QStringLiteral("1.0.0")},
               .panels = &panels,
               .clock = &clock,
               .userDefaults =
                   std::make_unique<QSettings>(folder.at("defaults.ini"), QSettings::IniFormat),
               .hashes = ContentHashMigration::Awaited,
               .makeProjectScreen = std::move(makeProjectScreen)}) {
        await(app.store().waitForStartUp());
    }

    QString make(QAnyStringView name, const Project &project) {
        const QString path = folder.at(name);
        await(ProjectFileIO().save(project, path, false));
        return path;
    }
    void open(const QString &file) { await(app.store().openProject(file)); }
    /// The text of the alert; empty without an alert.
    QString alert() { return app.router()->hasError() ? app.router()->errorMessage() : QString(); }
    AppCommand &command(const char *id) { return *app.commands()->command(QLatin1String(id)); }

    TestFolder folder;
    TestClock clock;
    TestPanels panels;
    CorvaneApp app;
};

} // namespace corvane::test
