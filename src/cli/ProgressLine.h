#pragma once

#include "cli/Console.h"
#include "platform/Clock.h"

#include <optional>

namespace corvane {

/// A progress bar on the error stream. Draws only if the stream is a terminal, and erases itself on
/// destruction. Main thread only.
class ProgressLine {
  public:
    explicit ProgressLine(Console &console, Clock &clock = Clock::system());
    ~ProgressLine();
    Q_DISABLE_COPY_MOVE(ProgressLine)

    /// Shows a fraction from 0 to 1 and the current item. Draws at most ten times per second.
    void show(double fraction, const QString &text);
    /// Shows an item without a fraction.
    void show(const QString &text);
    void clear();

  private:
    void draw(const QString &line);

    Console &m_console;
    Clock &m_clock;
    bool m_isTerminal;
    bool m_isDrawn = false;
    std::optional<std::chrono::milliseconds> m_lastDrawn;
};

} // namespace corvane
