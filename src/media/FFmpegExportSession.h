#pragma once

// For the source files of this floor only.

#include "media/ExportCut.h"
#include "media/OutputFile.h"
#include "media/StreamExport.h"

#include <atomic>

namespace corvane::media {

/// What the two ways of exporting have in common: the cut, the run through the source's packets,
/// the metadata and the progress. How each stream gets into the output is the derived one's.
class FFmpegExportSession : public ExportSession {
  public:
    void run(const QString &output, std::optional<MediaTimeRange> range,
             std::stop_token stop) override;
    double progress() const override { return m_progress; }

  protected:
    explicit FFmpegExportSession(std::unique_ptr<ExportSource> source);

    const ExportSource &source() const { return *m_source; }
    /// A stream's number in the source and what takes its packets.
    struct Way {
        int stream;
        std::unique_ptr<StreamExport> taker;
    };
    virtual std::vector<Way> makeWays(const ExportCut &cut, OutputFile &output) const = 0;

  private:
    void describe(const ExportCut &cut, OutputFile &output) const;
    void transfer(const ExportCut &cut, const std::vector<Way> &ways);
    void noteProgress(const AVPacket &packet, const ExportCut &cut);
    void testContent(const ExportCut &cut, const std::vector<Way> &ways) const;

    std::unique_ptr<ExportSource> m_source;
    std::atomic<double> m_progress = 0;
};

} // namespace corvane::media
