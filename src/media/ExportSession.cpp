#include "media/ExportSession.h"

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

/// Times beyond this are no times of a file; the bound keeps the rounding within 64 bits.
constexpr double kLargestTime = 9e18;

qint64 toTimescale(double seconds) {
    const double scaled = seconds * ExportTimeRange::kTimescale;
    return std::llround(std::clamp(scaled, -kLargestTime, kLargestTime));
}

} // namespace

ExportTimeRange ExportTimeRange::fromSeconds(double inSeconds, double outSeconds) {
    return {toTimescale(inSeconds), toTimescale(outSeconds)};
}

ExportSession::~ExportSession() = default;
ExportSessionFactory::~ExportSessionFactory() = default;

std::unique_ptr<ExportSession> NoExportSessions::create(const QString &, ExportPreset) {
    return nullptr;
}

} // namespace corvane::media
