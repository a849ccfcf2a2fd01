#pragma once

#include <thread>

class QGuiApplication;

namespace corvane {

/// Sets the application's font, its fallback and how text is rendered. Call once on the main
/// thread, after constructing the application and before loading a font.
void setUpFonts(QGuiApplication &application);

/// Starts a thread for slow initialization that the first frame would otherwise wait for: scanning
/// the installed fonts, and connecting to the session bus, which reports whether a screen reader is
/// running. Join the thread before destroying the application.
std::jthread preloadFonts();

} // namespace corvane
