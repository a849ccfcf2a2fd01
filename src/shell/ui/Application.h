#pragma once

#include <QString>

#include <functional>

class QQuickWindow;

namespace corvane {

/// What the program's start comes to: the status of its process.
///
/// Takes the data folder's lock, makes the application and its window, opens `file` unless it is
/// empty, and runs the event loop until the window is closed. Where another window of the program
/// has the folder, hands the file to it and returns; where something else has it, says so on the
/// error stream. `shown` is called once with the window. Main thread, with a QGuiApplication on
/// which `setUpLook` was called.
int runCorvane(const QString &dataFolder, const QString &file,
               const std::function<void(QQuickWindow &)> &shown = {});

} // namespace corvane
