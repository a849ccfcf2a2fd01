#pragma once

#include <thread>

class QGuiApplication;

/// What an application with Corvane's screens sets before it loads the first of them.
namespace corvane {

/// The application's font and what stands in for it, and how text is drawn. Called once, on the
/// main thread, after the application object is made.
void setUpLook(QGuiApplication &application);

/// Does on a thread what the first screen would wait for: reads the machine's fonts and connects to
/// the session's bus, which tells whether somebody has the screen read aloud. What it returns must
/// end before the application does.
std::jthread warmUp();

} // namespace corvane
