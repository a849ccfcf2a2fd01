#pragma once

#include "cli/Console.h"
#include "platform/Clock.h"

#include <optional>

namespace corvane {

/// A bar on the error stream that shows how far long work is. It shows nothing where nobody
/// watches, and takes itself away when it is dropped. Main thread.
class ProgressLine {
  public:
    explicit ProgressLine(Console &console, Clock &clock = Clock::system());
    ~ProgressLine();
    Q_DISABLE_COPY_MOVE(ProgressLine)

    /// From 0 to 1, and what is at work. Drawn at most ten times a second.
    void show(double fraction, const QString &text);
    /// Work whose length isn't known.
    void show(const QString &text);
    void clear();

  private:
    void draw(const QString &line);

    Console &m_console;
    Clock &m_clock;
    bool m_isWatched;
    bool m_isDrawn = false;
    std::optional<std::chrono::milliseconds> m_lastDrawn;
};

} // namespace corvane
