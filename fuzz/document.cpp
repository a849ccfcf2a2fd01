// Decodes any bytes as a project document. They must be refused, or decode to a document that
// survives a round trip.

#include "document/Project.h"
#include "document/ProjectMigration.h"

#include <cstdlib>

using namespace corvane;

namespace {

JSONDocument migrated(const JSONDocument &document) {
    JSONValue value = document.root().toValue();
    if (!value.object()) {
        throw JSONDecodeError(QStringLiteral("expected an object"));
    }
    ProjectMigration::migrate(*value.object());
    return JSONDocument::parse(encodeJSON(value));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    try {
        const JSONDocument document = migrated(JSONDocument::parse(bytes));
        const auto project = decodeJSON<Project>(document.root());
        const JSONDocument again = JSONDocument::parse(encodeJSON(project));
        if (decodeJSON<Project>(again.root()) != project) {
            std::abort();
        }
    } catch (const Failure &) {
        // Refused.
    }
    return 0;
}
