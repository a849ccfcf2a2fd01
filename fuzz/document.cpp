// Any bytes as a project document: they are refused in words, or they decode to a document that
// survives being written and read again.

#include "document/Project.h"
#include "document/ProjectMigration.h"

#include <cstdlib>

using namespace corvane;

namespace {

JSONDocument raised(const JSONDocument &document) {
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
        const JSONDocument document = raised(JSONDocument::parse(bytes));
        const auto project = decodeJSON<Project>(document.root());
        const JSONDocument again = JSONDocument::parse(encodeJSON(project));
        if (decodeJSON<Project>(again.root()) != project) {
            std::abort();
        }
    } catch (const Failure &) {
        // Refused; that it has a description is all that is asked.
    }
    return 0;
}
