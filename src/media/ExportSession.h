#pragma once

#include "media/MediaTime.h"
#include "platform/Failure.h"
#include "platform/JSONRecord.h"

#include <memory>
#include <optional>
#include <stop_token>

/// What this program needs of a media framework to make one output file from one source: an
/// interface, so that the logic above it is built and tested without a framework.
namespace corvane::media {

/// What comes out of a session. Every output is an MPEG-4 file.
enum class ExportPreset {
    highestQuality, ///< encoded anew in the source's size; the cut is exact to the frame
    hd1920x1080,    ///< encoded anew to fit 1920 by 1080; the cut is exact to the frame
    passthrough,    ///< the streams as they are; the cut snaps to the key frames
};

/// Thrown by a session or its factory: the source holds what the preset can't deliver.
class UnsupportedSource : public Failure {
  public:
    using Failure::Failure;
};

/// One export of one asset. It is made, run once, and dropped.
class ExportSession {
  public:
    virtual ~ExportSession();

    /// Exports on the calling thread, which belongs to an executor, and returns when the output is
    /// complete. `output` is an empty file that exists: it is opened by its path and filled in
    /// place, never replaced by another file; syncing, placing and removing it are the caller's.
    /// Without a range the whole asset is exported.
    ///
    /// Throws `Cancelled` soon after `stop` asks for it, `UnsupportedSource`, or any other
    /// exception whose description says what failed.
    virtual void run(const QString &output, std::optional<MediaTimeRange> range,
                     std::stop_token stop) = 0;

    /// How much is done, from 0 to 1. Any thread, also while `run` works.
    virtual double progress() const = 0;
};

/// Makes sessions. One object for the life of the process; any thread.
class ExportSessionFactory {
  public:
    virtual ~ExportSessionFactory();

    /// False where no session can be made at all, so that nobody prepares one in vain.
    virtual bool canCreateSessions() const = 0;
    /// Opens the asset. Nothing where no session can be made for it; throws `UnsupportedSource`.
    virtual std::unique_ptr<ExportSession> create(const QString &asset, ExportPreset preset) = 0;
};

/// The factory of a build without a media framework: it makes no session.
class NoExportSessions : public ExportSessionFactory {
  public:
    bool canCreateSessions() const override { return false; }
    std::unique_ptr<ExportSession> create(const QString &asset, ExportPreset preset) override;
};

} // namespace corvane::media

namespace corvane {

template <> struct RawValues<media::ExportPreset> {
    static constexpr std::array<std::pair<media::ExportPreset, std::string_view>, 3> table{{
        {media::ExportPreset::highestQuality, "AVAssetExportPresetHighestQuality"},
        {media::ExportPreset::hd1920x1080, "AVAssetExportPreset1920x1080"},
        {media::ExportPreset::passthrough, "AVAssetExportPresetPassthrough"},
    }};
};

} // namespace corvane
