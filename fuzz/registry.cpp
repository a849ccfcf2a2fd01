// Reads any bytes as the registry of grants. What was read must survive a round trip.

#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "trust/AuthorizationFile.h"

#include <QTemporaryDir>

#include <cstdlib>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/corvane-fuzz-XXXXXX"));
    const QString file = paths::joined(folder.path(), QStringLiteral("media-authorizations.json"));
    writeAtomically(file, QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    AuthorizationTables tables;
    try {
        tables = AuthorizationFile::read(file);
    } catch (const Failure &) {
        return 0;
    }
    AuthorizationFile::write(tables, file);
    if (AuthorizationFile::read(file) != tables) {
        std::abort();
    }
    return 0;
}
