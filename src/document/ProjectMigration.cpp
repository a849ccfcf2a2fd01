#include "document/ProjectMigration.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace corvane::ProjectMigration {

namespace {

using Object = JSONValue::Object;

/// Returns the array `owner[key]`; nullptr if the member is missing or not an array.
JSONValue::Array *findArray(Object &owner, const QString &key) {
    const auto found = owner.find(key);
    return found == owner.end() ? nullptr : found->array();
}

/// Calls `change(object)` for each object in the array `owner[key]`. Skips other elements.
template <typename Change> void changeEach(Object &owner, const QString &key, Change change) {
    if (JSONValue::Array *const array = findArray(owner, key)) {
        for (JSONValue &element : *array) {
            if (Object *const object = element.object()) {
                change(*object);
            }
        }
    }
}

void addMissing(Object &object, const QString &key, const JSONValue &value) {
    if (!object.contains(key)) {
        object.insert(key, value);
    }
}

void addMissingToSubclips(Object &document, const QString &key, const JSONValue &value) {
    changeEach(document, QStringLiteral("videos"), [&](Object &video) {
        changeEach(video, QStringLiteral("subclips"),
                   [&](Object &subclip) { addMissing(subclip, key, value); });
    });
}

double inSeconds(const JSONValue &subclip) {
    const Object *const object = subclip.object();
    return object ? object->value(QStringLiteral("inSeconds")).number() : 0.0;
}

/// Sets `creationIndex` of each subclip that has none to its rank by in point, from 1.
void rankSubclips(JSONValue::Array &subclips) {
    std::vector<qsizetype> order(static_cast<size_t>(subclips.size()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, [&subclips](qsizetype left, qsizetype right) {
        return inSeconds(subclips.at(left)) < inSeconds(subclips.at(right));
    });
    for (size_t rank = 0; rank < order.size(); ++rank) {
        if (Object *const subclip = subclips[order[rank]].object()) {
            addMissing(*subclip, QStringLiteral("creationIndex"), qint64(rank + 1));
        }
    }
}

void addCreationIndexes(Object &document) {
    changeEach(document, QStringLiteral("videos"), [](Object &video) {
        if (JSONValue::Array *const subclips = findArray(video, QStringLiteral("subclips"))) {
            rankSubclips(*subclips);
        }
    });
}

void addBatchCounts(Object &document) {
    changeEach(document, QStringLiteral("exportBatches"), [](Object &batch) {
        addMissing(batch, QStringLiteral("succeededCount"), 0);
        addMissing(batch, QStringLiteral("failedCount"), 0);
        addMissing(batch, QStringLiteral("cancelledCount"), 0);
        addMissing(batch, QStringLiteral("cancelled"), false);
    });
}

/// The step at index i migrates from version i + 1 to i + 2; nullptr changes nothing.
constexpr auto kSteps = std::to_array<void (*)(Object &)>({
    addCreationIndexes,
    addBatchCounts,
    [](Object &document) { addMissingToSubclips(document, QStringLiteral("rating"), 0); },
    [](Object &document) { addMissingToSubclips(document, QStringLiteral("favorite"), false); },
    nullptr,
    nullptr,
});
static_assert(kSteps.size() == kCurrentSchemaVersion - 1);

} // namespace

MigrationError MigrationError::unknownFutureSchema(qint64 version) {
    return MigrationError(
        QStringLiteral("Project file uses schema version %1, which is newer than this build of "
                       "Corvane (7) supports. Update Corvane to open this file.")
            .arg(version));
}

qint64 schemaVersion(JSONView document) {
    qint64 version = 1;
    document.forEachMember([&version](std::string_view key, JSONView value) {
        if (key == "schemaVersion") {
            version = value.integer().value_or(1);
        }
    });
    return version;
}

void migrate(Object &object) {
    const JSONValue member = object.value(QStringLiteral("schemaVersion"));
    const qint64 version = member.integer() ? *member.integer() : 1;
    if (version > kCurrentSchemaVersion) {
        throw MigrationError::unknownFutureSchema(version);
    }
    for (qint64 from = std::max<qint64>(version, 1); from < kCurrentSchemaVersion; ++from) {
        if (const auto step = kSteps.at(size_t(from - 1))) {
            step(object);
        }
    }
    object.insert(QStringLiteral("schemaVersion"), kCurrentSchemaVersion);
}

bool hasReviewMarks(const VideoRecord &video) {
    return video.rating > 0 || video.favorite || video.selectedForExport || video.rejected ||
           !video.subclips.isEmpty();
}

bool migrateReviewedFlags(Project &project, const QDateTime &now) {
    bool anyChanged = false;
    for (qsizetype index = 0; index < project.videos.size(); ++index) {
        const VideoRecord &video = *project.videos.at(index);
        if (!video.reviewed && hasReviewMarks(video)) {
            VideoRecord &changed = project.videos[index].edit();
            changed.reviewed = true;
            changed.reviewedAt = now;
            anyChanged = true;
        }
    }
    return anyChanged;
}

} // namespace corvane::ProjectMigration
