#pragma once

#include "shell/CorvaneApp.h"

#include <functional>

class QQuickWindow;

namespace corvane {

/// The parameters of `runCorvane`.
struct StartOptions {
    QString dataFolder;
    QString file = {}; ///< project to open; empty for the home screen
    CorvaneApp::MakeProjectScreen makeProjectScreen = {};
    /// Called once with the window, before it is shown.
    std::function<void(QQuickWindow &)> onWindowCreated = {};
};

/// Runs the application and returns the process's exit status.
///
/// Locks the data folder, creates the window, opens the file and runs the event loop until the
/// window is closed or a signal interrupts the process. If another instance has the folder locked,
/// hands the file to it and returns. Prints failures to start to standard error. Main thread, after
/// `setUpFonts`.
int runCorvane(const StartOptions &options);

} // namespace corvane
