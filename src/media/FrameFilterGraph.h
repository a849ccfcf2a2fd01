#pragma once

// For the source files of this floor only.

#include "media/VideoFormat.h"

#include <optional>

namespace corvane::media {

/// Brings decoded pictures into the format that is encoded: cuts, scales, reduces the bits and maps
/// high dynamic range to BT.709, or to the red, green and blue of it. Pictures that change within a
/// stream are followed.
class FrameFilterGraph {
  public:
    FrameFilterGraph(const VideoFormat &target, AVRational timeBase);

    /// The picture in the target's format, with its own timestamp; the same one where it has it.
    FrameHandle convert(FrameHandle picture);

  private:
    bool isTarget(const AVFrame &picture) const;
    bool isSameKind(const AVFrame &picture) const;
    void build(const AVFrame &picture);
    QByteArray filtersFor(const AVFrame &picture) const;
    QByteArray scaling(const AVFrame &picture) const;

    VideoFormat m_target;
    AVRational m_timeBase;
    FilterGraphHandle m_graph;
    AVFilterContext *m_input = nullptr;  ///< the graph's
    AVFilterContext *m_output = nullptr; ///< the graph's
    FrameHandle m_kind;                  ///< the format that the graph was built for
};

/// Pictures of high dynamic range in the red, green and blue of a screen, mapped as an export maps
/// them. One thread at a time.
class ToneMapper {
  public:
    /// `pixels`: AV_PIX_FMT_RGB24 or AV_PIX_FMT_RGB32.
    explicit ToneMapper(AVPixelFormat pixels);

    /// Scaled to `size`. Throws `MediaError`.
    FrameHandle map(const AVFrame &picture, QSize size);

  private:
    AVPixelFormat m_pixels;
    std::optional<FrameFilterGraph> m_conversion;
    QSize m_size; ///< that it makes
};

} // namespace corvane::media
