#pragma once

#include "shell/CorvaneApp.h"

#include <functional>

class QQuickWindow;

namespace corvane {

/// What the program is started with.
struct Start {
    QString dataFolder;
    QString file = {}; ///< to be opened; empty for none
    CorvaneApp::MakeProjectScreen makeProjectScreen = {};
    /// Called once with the window.
    std::function<void(QQuickWindow &)> shown = {};
};

/// What the program's start comes to: the status of its process.
///
/// Takes the data folder's lock, makes the application and its window, opens the file and runs the
/// event loop until the window is closed or a signal asks for the end. Where another window of the
/// program has the folder, hands the file to it and returns; where something else has it, says so
/// on the error stream. Main thread, with a QGuiApplication on which `setUpLook` was called.
int runCorvane(const Start &start);

} // namespace corvane
