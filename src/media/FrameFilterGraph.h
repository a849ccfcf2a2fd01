#pragma once

// Internal to src/media.

#include "media/VideoFormat.h"

#include <optional>

namespace corvane::media {

/// Converts decoded frames to an encoder's format by an FFmpeg filter graph: crops, scales, reduces
/// the bit depth and maps high dynamic range to BT.709 or to RGB. The graph is rebuilt when the
/// frames' format changes within a stream. Not thread-safe. Throws `MediaError`.
class FrameFilterGraph {
  public:
    FrameFilterGraph(const VideoFormat &target, AVRational timeBase);

    /// Returns the frame in the target's format with the same timestamp, or `frame` itself if it
    /// already has that format.
    FrameHandle convert(FrameHandle frame);

  private:
    bool isInTargetFormat(const AVFrame &frame) const;
    bool isInSourceFormat(const AVFrame &frame) const;
    void build(const AVFrame &frame);
    QByteArray filtersFor(const AVFrame &frame) const;
    QByteArray sizeFilter(const AVFrame &frame) const;

    VideoFormat m_target;
    AVRational m_timeBase;
    FilterGraphHandle m_graph;
    AVFilterContext *m_input = nullptr;  ///< owned by the graph
    AVFilterContext *m_output = nullptr; ///< owned by the graph
    FrameHandle m_sourceFormat;          ///< properties of the frames that the graph was built for
};

/// Maps frames of high dynamic range to RGB for a screen, with the same curve as an export. Not
/// thread-safe.
class ToneMapper {
  public:
    /// `pixels`: AV_PIX_FMT_RGB24 or AV_PIX_FMT_RGB32.
    explicit ToneMapper(AVPixelFormat pixels) : m_pixels(pixels) {}

    /// Returns the frame scaled to `size`. Throws `MediaError`.
    FrameHandle map(const AVFrame &frame, QSize size);

  private:
    AVPixelFormat m_pixels;
    std::optional<FrameFilterGraph> m_graph;
    QSize m_size; ///< that the graph scales to
};

} // namespace corvane::media
