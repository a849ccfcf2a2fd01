#include "media/AudioTranscoder.h"
#include "media/FFmpegExportSession.h"
#include "media/StreamCopier.h"
#include "media/VideoTranscoder.h"

namespace corvane::media {

namespace {

QString codecName(const AVStream &stream) {
    return QString::fromLatin1(avcodec_get_name(stream.codecpar->codec_id));
}

/// Copies all video and audio streams, and the data streams that MPEG-4 files support.
class PassthroughSession : public FFmpegExportSession {
  public:
    /// Throws `UnsupportedSource` if MPEG-4 files don't support a video or audio stream.
    explicit PassthroughSession(std::unique_ptr<ExportSource> opened)
        : FFmpegExportSession(std::move(opened)) {
        for (const AVMediaType type : {AVMEDIA_TYPE_VIDEO, AVMEDIA_TYPE_AUDIO}) {
            for (const int index : source().streamsOf(type)) {
                if (!StreamCopier::isPossible(source().stream(index))) {
                    throw UnsupportedSource(QStringLiteral("An MPEG-4 file can't hold %1.")
                                                .arg(codecName(source().stream(index))));
                }
            }
        }
    }

  protected:
    std::vector<Route> makeRoutes(const ExportCut &cut, OutputFile &output) const override {
        std::vector<Route> routes;
        for (const AVMediaType type :
             {AVMEDIA_TYPE_VIDEO, AVMEDIA_TYPE_AUDIO, AVMEDIA_TYPE_SUBTITLE, AVMEDIA_TYPE_DATA}) {
            addCopies(type, cut, output, routes);
        }
        return routes;
    }
};

/// Transcodes the first video stream and all audio streams. Copies the data streams that MPEG-4
/// files support.
class TranscodeSession : public FFmpegExportSession {
  public:
    /// Scales the video down to fit `bound`, if there is one. Throws `UnsupportedSource` if this
    /// build has no decoder for a stream.
    TranscodeSession(std::unique_ptr<ExportSource> opened, std::optional<QSize> bound)
        : FFmpegExportSession(std::move(opened)), m_bound(bound) {
        if (const auto video = source().video()) {
            requireDecoder(source().stream(*video));
        }
        for (const int audio : source().streamsOf(AVMEDIA_TYPE_AUDIO)) {
            requireDecoder(source().stream(audio));
        }
    }

  protected:
    std::vector<Route> makeRoutes(const ExportCut &cut, OutputFile &output) const override {
        std::vector<Route> routes;
        if (const auto video = source().video()) {
            routes.push_back({*video, std::make_unique<VideoTranscoder>(source(), *video, cut,
                                                                        m_bound, output)});
        }
        for (const int audio : source().streamsOf(AVMEDIA_TYPE_AUDIO)) {
            const int channels = source().stream(audio).codecpar->ch_layout.nb_channels;
            for (int first = 0; first < channels; first += AudioTranscoder::kMaxChannels) {
                routes.push_back({audio, std::make_unique<AudioTranscoder>(source(), audio, first,
                                                                           cut, output)});
            }
        }
        addCopies(AVMEDIA_TYPE_DATA, cut, output, routes);
        return routes;
    }

  private:
    static void requireDecoder(const AVStream &stream) {
        if (!avcodec_find_decoder(stream.codecpar->codec_id)) {
            throw UnsupportedSource(
                QStringLiteral("The codec %1 can't be decoded.").arg(codecName(stream)));
        }
    }

    std::optional<QSize> m_bound;
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

class FFmpegExportSessions : public ExportSessionFactory {
  public:
    bool canCreateSessions() const override { return true; }

    std::unique_ptr<ExportSession> create(const QString &asset, ExportPreset preset) override {
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
};

} // namespace

ExportSessionFactory &ffmpegExportSessions() {
    static FFmpegExportSessions sessions;
    return sessions;
}

} // namespace corvane::media
