#pragma once

#include "media/MediaTime.h"
#include "platform/Failure.h"
#include "platform/JSONRecord.h"

#include <memory>
#include <optional>
#include <stop_token>

/// Exports one source file to one output file. An interface, so that the layers above can be tested
/// without FFmpeg.
namespace corvane::media {

/// Every output is an MPEG-4 file.
enum class ExportPreset {
    highestQuality, ///< transcoded at the source's size; frame-accurate
    hd1920x1080,    ///< transcoded to fit 1920 by 1080; frame-accurate
    passthrough,    ///< streams are copied; the cut snaps to keyframes
};

/// Thrown by a session or its factory if the preset doesn't support the source.
class UnsupportedSource : public Failure {
  public:
    using Failure::Failure;
};

/// One export of one asset. Runs once.
class ExportSession {
  public:
    virtual ~ExportSession() = default;

    /// Exports the range, or the entire asset without one. Blocks the calling executor thread until
    /// the output is complete. `output` is an existing empty file, which is opened by its path and
    /// filled in place, never replaced. The path may lead to an open file of this process. The
    /// caller syncs, moves or removes it.
    ///
    /// Throws `Cancelled` soon after `stop` is triggered, `UnsupportedSource`, or another exception
    /// that describes the failure.
    virtual void run(const QString &output, std::optional<MediaTimeRange> range,
                     std::stop_token stop) = 0;

    /// From 0 to 1. Thread-safe, also while `run` is running.
    virtual double progress() const = 0;
};

/// Creates sessions. One object for the lifetime of the process. Thread-safe.
class ExportSessionFactory {
  public:
    virtual ~ExportSessionFactory() = default;

    /// False if this build can't create any session.
    virtual bool canCreateSessions() const = 0;
    /// Opens the asset. Returns nullptr if it can't be exported at all; throws `UnsupportedSource`.
    virtual std::unique_ptr<ExportSession> create(const QString &asset, ExportPreset preset) = 0;
};

/// The factory of this build, which uses FFmpeg. Sessions encode video as visually lossless H.264
/// and audio as AAC. With `passthrough`, `create` throws `UnsupportedSource` for video or audio
/// that MPEG-4 files don't support.
ExportSessionFactory &ffmpegExportSessions();

} // namespace corvane::media

namespace corvane {

template <>
inline constexpr auto rawValues<media::ExportPreset> =
    std::to_array<RawValue<media::ExportPreset>>({
        {media::ExportPreset::highestQuality, "AVAssetExportPresetHighestQuality"},
        {media::ExportPreset::hd1920x1080, "AVAssetExportPreset1920x1080"},
        {media::ExportPreset::passthrough, "AVAssetExportPresetPassthrough"},
    });

} // namespace corvane
