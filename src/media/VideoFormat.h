#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

#include <QSize>

namespace corvane::media {

/// What an encoded picture is like: 8 bits, 4:2:0, which every player shows.
struct VideoFormat {
    QSize size; ///< as stored, before the display matrix turns it
    AVPixelFormat pixels = AV_PIX_FMT_YUV420P;
    AVRational sampleAspectRatio{0, 1};
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
    AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    AVChromaLocation chromaLocation = AVCHROMA_LOC_UNSPECIFIED;
    AVFieldOrder fieldOrder = AV_FIELD_PROGRESSIVE;

    bool isInterlaced() const { return fieldOrder > AV_FIELD_PROGRESSIVE; }

    /// For a stream, in its own size, or made smaller so that the picture as it is *shown*, turned
    /// and with its pixels' shape, fits inside `bound`. It is never enlarged.
    ///
    /// The size is even, as 4:2:0 needs it (a multiple of 4 rows where interlaced): what is too
    /// much at the right and at the bottom is cut off, at most one column and three rows, because
    /// scaling would soften and padding would add an edge. High dynamic range becomes BT.709.
    static VideoFormat of(const AVStream &stream, std::optional<QSize> bound);
};

/// True for the transfer functions of high dynamic range, PQ and HLG.
bool isHighDynamicRange(int transfer);

} // namespace corvane::media
