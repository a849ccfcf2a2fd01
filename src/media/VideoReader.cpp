#include "media/VideoReader.h"

#include <algorithm>

namespace corvane::media {

namespace {

AVStream &requireVideoStream(const MediaInput &input) {
    AVStream *stream = firstVideoStream(*input.context());
    if (!stream) {
        throw MediaError(QStringLiteral("It has no video track."));
    }
    return *stream;
}

} // namespace

qsizetype VideoFrame::byteCount() const {
    qsizetype bytes = 0;
    for (const AVBufferRef *buffer : avFrame->buf) {
        bytes += buffer ? qsizetype(buffer->size) : 0;
    }
    return bytes;
}

VideoReader::VideoReader(const QString &path, Options options, std::stop_token stop)
    : m_input(path, MediaInput::Depth::Timestamps, std::move(stop)),
      m_stream(requireVideoStream(m_input)),
      m_timeline(m_input, m_stream),
      m_search(m_input, m_stream, m_timeline, options) {}

std::optional<VideoFrame> VideoReader::frameAt(MediaTime time, double tolerance) {
    return toVideoFrame(m_search.find(goalFor(time, tolerance)));
}

std::optional<VideoFrame> VideoReader::next() {
    return toVideoFrame(m_search.next());
}

std::optional<double> VideoReader::secondsToDecode(MediaTime time) const {
    return m_search.secondsToDecode(goalFor(time, 0));
}

FrameSearch::Goal VideoReader::goalFor(MediaTime time, double tolerance) const {
    const qint64 target = m_timeline.lookupTicks(time);
    const auto margin = qint64(std::max(tolerance, 0.0) / av_q2d(m_stream.time_base));
    return {target, target - margin, target + margin};
}

std::optional<VideoFrame>
VideoReader::toVideoFrame(const std::optional<DecodedFrame> &frame) const {
    if (!frame) {
        return std::nullopt;
    }
    return VideoFrame{frame->avFrame, m_timeline.timeAt(frame->time),
                      m_timeline.timeAt(m_search.currentEnd())};
}

} // namespace corvane::media
