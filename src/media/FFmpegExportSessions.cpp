#include "media/FFmpegExportSessions.h"

#include "media/PassthroughSession.h"
#include "media/TranscodeSession.h"

namespace corvane::media {

namespace {

class FFmpegExportSessions : public ExportSessionFactory {
  public:
    bool canCreateSessions() const override { return true; }
    std::unique_ptr<ExportSession> create(const QString &asset, ExportPreset preset) override;
};

std::unique_ptr<ExportSource> openSource(const QString &asset) {
    try {
        auto source = std::make_unique<ExportSource>(asset);
        const bool isEmpty = source->streamsOf(AVMEDIA_TYPE_VIDEO).empty() &&
                             source->streamsOf(AVMEDIA_TYPE_AUDIO).empty();
        return isEmpty ? nullptr : std::move(source);
    } catch (const MediaError &) {
        return nullptr; // not a media file
    }
}

std::unique_ptr<ExportSession> FFmpegExportSessions::create(const QString &asset,
                                                            ExportPreset preset) {
    std::unique_ptr<ExportSource> source = openSource(asset);
    if (!source) {
        return nullptr;
    }
    switch (preset) {
    case ExportPreset::highestQuality:
        return std::make_unique<TranscodeSession>(std::move(source), std::nullopt);
    case ExportPreset::hd1920x1080:
        return std::make_unique<TranscodeSession>(std::move(source), QSize(1920, 1080));
    case ExportPreset::passthrough:
        return std::make_unique<PassthroughSession>(std::move(source));
    }
    return nullptr;
}

} // namespace

ExportSessionFactory &ffmpegExportSessions() {
    static FFmpegExportSessions sessions;
    return sessions;
}

} // namespace corvane::media
