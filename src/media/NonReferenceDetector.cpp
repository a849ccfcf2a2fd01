#include "media/NonReferenceDetector.h"

#include <algorithm>
#include <span>

namespace corvane::media {

namespace {

using Bytes = std::span<const uint8_t>;

constexpr size_t kStartCodeSize = 3; ///< 0, 0, 1

/// Layout of the decoder configuration record (avcC, hvcC) in the extradata.
struct RecordLayout {
    size_t size;             ///< of the fixed part
    size_t lengthSizeOffset; ///< of the byte whose two lowest bits are the length size minus one
};
constexpr RecordLayout kH264Record{7, 4};
constexpr RecordLayout kHEVCRecord{23, 21};

int lengthSize(const AVCodecParameters &codec) {
    const RecordLayout layout = codec.codec_id == AV_CODEC_ID_HEVC ? kHEVCRecord : kH264Record;
    const Bytes record(codec.extradata, size_t(std::max(codec.extradata_size, 0)));
    const bool hasStartCodes =
        record.size() < layout.size || (record[0] == 0 && record[1] == 0 && record[2] <= 1);
    return hasStartCodes ? 0 : (record[layout.lengthSizeOffset] & 3) + 1;
}

/// The bytes after the next start code; empty if there is none.
Bytes afterStartCode(Bytes bytes) {
    for (size_t offset = 0; offset + kStartCodeSize < bytes.size(); ++offset) {
        if (bytes[offset] == 0 && bytes[offset + 1] == 0 && bytes[offset + 2] == 1) {
            return bytes.subspan(offset + kStartCodeSize);
        }
    }
    return {};
}

struct NalUnit {
    Bytes bytes; ///< empty at the end or if the unit is truncated
    Bytes rest;  ///< what follows the unit
};

NalUnit nextUnit(Bytes bytes, int lengthSize) {
    if (lengthSize == 0) {
        const Bytes unit = afterStartCode(bytes); // its end doesn't matter
        return {unit, unit};
    }
    const auto prefix = size_t(lengthSize);
    size_t length = 0;
    for (size_t offset = 0; offset < std::min(prefix, bytes.size()); ++offset) {
        length = length << 8 | bytes[offset];
    }
    if (bytes.size() <= prefix || length == 0 || length > bytes.size() - prefix) {
        return {};
    }
    return {bytes.subspan(prefix, length), bytes.subspan(prefix + length)};
}

} // namespace

NonReferenceDetector::NonReferenceDetector(const AVCodecParameters &codec)
    : m_codec(codec.codec_id), m_lengthSize(lengthSize(codec)) {}

/// From a NAL unit's first byte. Unknown for units that hold no slice of a frame.
NonReferenceDetector::FrameKind NonReferenceDetector::kindOfUnit(uint8_t header) const {
    if (m_codec == AV_CODEC_ID_H264) {
        constexpr int kLastSliceType = 5;
        const int type = header & 0x1f;
        const bool isReference = (header >> 5 & 3) != 0; // nal_ref_idc
        return type == 0 || type > kLastSliceType ? FrameKind::unknown
               : isReference                      ? FrameKind::reference
                                                  : FrameKind::nonReference;
    }
    constexpr int kFirstOtherType = 32;
    constexpr int kFirstRandomAccessType = 16; // below it, even types are sub-layer non-reference
    const int type = header >> 1 & 0x3f;
    return type >= kFirstOtherType                             ? FrameKind::unknown
           : type >= kFirstRandomAccessType || (type & 1) != 0 ? FrameKind::reference
                                                               : FrameKind::nonReference;
}

NonReferenceDetector::FrameKind NonReferenceDetector::kindOf(const AVPacket &packet) const {
    FrameKind kind = FrameKind::unknown;
    NalUnit unit = nextUnit({packet.data, size_t(std::max(packet.size, 0))}, m_lengthSize);
    for (; !unit.bytes.empty(); unit = nextUnit(unit.rest, m_lengthSize)) {
        const FrameKind unitKind = kindOfUnit(unit.bytes[0]);
        kind = unitKind == FrameKind::unknown ? kind : unitKind;
        if (kind == FrameKind::reference) {
            break;
        }
    }
    return kind;
}

bool NonReferenceDetector::isNonReference(const AVPacket &packet) const {
    if ((packet.flags & AV_PKT_FLAG_DISPOSABLE) != 0) {
        return true;
    }
    return (m_codec == AV_CODEC_ID_H264 || m_codec == AV_CODEC_ID_HEVC) &&
           kindOf(packet) == FrameKind::nonReference;
}

} // namespace corvane::media
