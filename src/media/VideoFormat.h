#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

#include <QSize>

namespace corvane::media {

/// The format of encoded video: 8 bits, 4:2:0, which every player supports.
struct VideoFormat {
    QSize size; ///< as stored, before the display matrix rotates it
    AVPixelFormat pixels = AV_PIX_FMT_YUV420P;
    AVRational sampleAspectRatio{0, 1};
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
    AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    AVChromaLocation chromaLocation = AVCHROMA_LOC_UNSPECIFIED;
    AVFieldOrder fieldOrder = AV_FIELD_PROGRESSIVE;

    bool isInterlaced() const { return fieldOrder > AV_FIELD_PROGRESSIVE; }

    /// The format to encode `stream` in: in its own size, or reduced so that the displayed frame
    /// (rotated, with square pixels) fits inside `bound`. Never enlarged.
    ///
    /// 4:2:0 needs an even size, and a multiple of 4 rows if interlaced. The excess, at most one
    /// column and three rows, is cropped at the right and at the bottom: scaling would soften the
    /// frame and padding would add an edge. High dynamic range becomes BT.709.
    static VideoFormat of(const AVStream &stream, std::optional<QSize> bound);
};

/// The stream's clockwise rotation for display in quarter turns, 0 to 3.
int clockwiseQuarterTurns(const AVStream &stream);

/// True for the transfer functions of high dynamic range, PQ and HLG.
bool isHighDynamicRange(int transfer);

/// True if luma takes all 256 levels of 8 bits rather than the limited range of video.
bool isFullRange(AVColorRange range, int pixelFormat);

} // namespace corvane::media
