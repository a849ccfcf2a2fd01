#include "media/NonReferenceDetector.h"

#include <algorithm>
#include <span>

namespace corvane::media {

namespace {

using Bytes = std::span<const uint8_t>;

constexpr size_t kStartCode = 3; ///< 0, 0, 1

/// Of the record that stands before a stream whose units begin with their lengths.
struct LengthPlace {
    size_t recordSize;
    size_t byte; ///< whose two lowest bits hold the size of a length, less one
};
constexpr LengthPlace kPlaceInH264{7, 4};
constexpr LengthPlace kPlaceInHEVC{23, 21};

int lengthSize(const AVCodecParameters &codec) {
    const LengthPlace place = codec.codec_id == AV_CODEC_ID_HEVC ? kPlaceInHEVC : kPlaceInH264;
    const Bytes record(codec.extradata, size_t(std::max(codec.extradata_size, 0)));
    const bool isStartCode =
        record.size() < place.recordSize || (record[0] == 0 && record[1] == 0 && record[2] <= 1);
    return isStartCode ? 0 : (record[place.byte] & 3) + 1;
}

/// From behind the next start code on; empty where there is none.
Bytes behindStartCode(Bytes bytes) {
    for (size_t at = 0; at + kStartCode < bytes.size(); ++at) {
        if (bytes[at] == 0 && bytes[at + 1] == 0 && bytes[at + 2] == 1) {
            return bytes.subspan(at + kStartCode);
        }
    }
    return {};
}

/// The unit that the bytes begin with, once they begin with one, and what follows it.
struct Unit {
    Bytes bytes;
    Bytes rest;
};

/// Nothing in `bytes` where the rest holds no whole unit.
Unit nextUnit(Bytes bytes, int lengthSize) {
    if (lengthSize == 0) {
        const Bytes unit = behindStartCode(bytes);
        return {unit, unit};
    }
    const auto prefix = size_t(lengthSize);
    size_t length = 0;
    for (size_t at = 0; at < std::min(prefix, bytes.size()); ++at) {
        length = length << 8 | bytes[at];
    }
    if (bytes.size() <= prefix || length == 0 || length > bytes.size() - prefix) {
        return {};
    }
    return {bytes.subspan(prefix, length), bytes.subspan(prefix + length)};
}

} // namespace

NonReferenceDetector::NonReferenceDetector(const AVCodecParameters &codec)
    : m_codec(codec.codec_id), m_lengthSize(lengthSize(codec)) {}

/// What a unit's first byte tells: nothing where it holds no part of a picture.
NonReferenceDetector::Use NonReferenceDetector::useOf(uint8_t header) const {
    if (m_codec == AV_CODEC_ID_H264) {
        constexpr int kLastPictureType = 5;
        const int type = header & 0x1f;
        const bool isReferenced = (header >> 5 & 3) != 0;
        return type == 0 || type > kLastPictureType ? Use::none
               : isReferenced                       ? Use::referenced
                                                    : Use::unreferenced;
    }
    constexpr int kFirstOtherType = 32;
    constexpr int kFirstAlwaysReferenced = 16;
    const int type = header >> 1 & 0x3f;
    return type >= kFirstOtherType                             ? Use::none
           : type >= kFirstAlwaysReferenced || (type & 1) != 0 ? Use::referenced
                                                               : Use::unreferenced;
}

NonReferenceDetector::Use NonReferenceDetector::usedIn(const AVPacket &packet) const {
    Use use = Use::none;
    Unit unit = nextUnit({packet.data, size_t(std::max(packet.size, 0))}, m_lengthSize);
    for (; !unit.bytes.empty(); unit = nextUnit(unit.rest, m_lengthSize)) {
        const Use own = useOf(unit.bytes[0]);
        use = own == Use::none ? use : own;
        if (use == Use::referenced) {
            break;
        }
    }
    return use;
}

bool NonReferenceDetector::contains(const AVPacket &packet) const {
    if ((packet.flags & AV_PKT_FLAG_DISPOSABLE) != 0) {
        return true;
    }
    return (m_codec == AV_CODEC_ID_H264 || m_codec == AV_CODEC_ID_HEVC) &&
           usedIn(packet) == Use::unreferenced;
}

} // namespace corvane::media
