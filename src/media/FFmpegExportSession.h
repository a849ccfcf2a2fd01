#pragma once

// Internal to src/media.

#include "media/ExportCut.h"
#include "media/OutputFile.h"
#include "media/StreamExport.h"

#include <atomic>

namespace corvane::media {

/// Base class of the export sessions: finds the cut, distributes the source's packets, copies the
/// metadata and reports progress. Subclasses decide how each stream is exported.
class FFmpegExportSession : public ExportSession {
  public:
    void run(const QString &output, std::optional<MediaTimeRange> range,
             std::stop_token stop) override;
    double progress() const override { return m_progress; }

  protected:
    explicit FFmpegExportSession(std::unique_ptr<ExportSource> source);

    const ExportSource &source() const { return *m_source; }

    struct Route {
        int stream; ///< index in the source
        std::unique_ptr<StreamExport> sink;
    };
    /// Several routes can share a source stream.
    virtual std::vector<Route> makeRoutes(const ExportCut &cut, OutputFile &output) const = 0;

    /// Adds routes that copy the streams of this type, except those that MPEG-4 files don't
    /// support.
    void addCopies(AVMediaType type, const ExportCut &cut, OutputFile &output,
                   std::vector<Route> &routes) const;

  private:
    void copyMetadata(const ExportCut &cut, OutputFile &output) const;
    void transfer(const ExportCut &cut, const std::vector<Route> &routes);
    void updateProgress(const AVPacket &packet, const ExportCut &cut);
    void checkOutput(const ExportCut &cut, const std::vector<Route> &routes) const;

    std::unique_ptr<ExportSource> m_source;
    std::atomic<double> m_progress = 0;
};

} // namespace corvane::media
