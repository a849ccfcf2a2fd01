// Reads arbitrary bytes as a media file: its facts and some frames.

#include "media/MediaAsset.h"
#include "media/MediaError.h"
#include "media/VideoReader.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <QTemporaryDir>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/corvane-fuzz-XXXXXX"));
    const QString file = paths::joined(folder.path(), QStringLiteral("clip"));
    writeAtomically(file, QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    try {
        (void)media::MediaAsset::read(file);
        media::VideoReader reader(file, {.threads = 1});
        (void)reader.frameAt({1, 10});
        (void)reader.next();
        (void)reader.frameAt({0, 1});
    } catch (const media::MediaError &) {
        // Refused.
    }
    return 0;
}
