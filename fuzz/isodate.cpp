// Parses any text as a date. It must be refused, or survive a round trip.

#include "platform/ISODate.h"

#include <cstdlib>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArrayView text(reinterpret_cast<const char *>(data), qsizetype(size));
    if (const auto date = isoDate::fromText(text)) {
        if (isoDate::fromText(isoDate::toText(*date).toLatin1()) != date) {
            std::abort();
        }
    }
    return 0;
}
