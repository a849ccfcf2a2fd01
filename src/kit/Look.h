#pragma once

#include <thread>

class QGuiApplication;

/// What an application with Corvane's screens sets before it loads the first of them.
namespace corvane {

/// The application's font and what stands in for it, and how text is drawn. Called once, on the
/// main thread, after the application object is made.
void setUpLook(QGuiApplication &application);

/// Reads the machine's fonts on a thread, so that the first text needn't wait for them; what it
/// returns must end before the application does.
std::jthread warmUpFonts();

} // namespace corvane
