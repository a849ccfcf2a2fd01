#include "cli/ProgressLine.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr int kBarCells = 24;
constexpr qsizetype kMostTextCharacters = 44; ///< keeps the line within 80 columns
constexpr std::chrono::milliseconds kRedrawInterval{100};

} // namespace

ProgressLine::ProgressLine(Console &console, Clock &clock)
    : m_console(console), m_clock(clock), m_isTerminal(console.errorIsTerminal()) {}

ProgressLine::~ProgressLine() {
    clear();
}

void ProgressLine::show(double fraction, const QString &text) {
    const double clamped = std::clamp(fraction, 0.0, 1.0);
    const int cells = int(clamped * kBarCells);
    draw(QStringLiteral("[%1%2] %3% %4")
             .arg(QString(cells, QLatin1Char('#')), QString(kBarCells - cells, QLatin1Char('.')))
             .arg(int(clamped * 100), 3)
             .arg(printable(text).left(kMostTextCharacters)));
}

void ProgressLine::show(const QString &text) {
    draw(printable(text).left(kMostTextCharacters));
}

void ProgressLine::draw(const QString &line) {
    const auto now = m_clock.monotonic();
    if (!m_isTerminal || (m_lastDrawn && now - *m_lastDrawn < kRedrawInterval)) {
        return;
    }
    m_lastDrawn = now;
    m_isDrawn = true;
    m_console.writeError("\r" + line.toUtf8() + "\x1b[K");
}

void ProgressLine::clear() {
    if (m_isDrawn) {
        m_console.writeError("\r\x1b[K");
        m_isDrawn = false;
    }
}

} // namespace corvane
