#include "document/Project.h"

#include "platform/Paths.h"

#include <QUuid>

#include <algorithm>

namespace corvane {

namespace {

template <typename Value> size_t hashOf(const Value &value, size_t seed) {
    if constexpr (std::is_enum_v<Value>) {
        return ::qHash(int(value), seed);
    } else {
        using ::qHash; // hidden by this namespace's overloads
        return qHash(value, seed);
    }
}

template <typename Value> size_t hashOf(const QList<Value> &list, size_t seed) {
    for (const Value &element : list) {
        seed = hashOf(element, seed);
    }
    return ::qHash(list.size(), seed);
}

template <typename Value> size_t hashOf(const std::optional<Value> &value, size_t seed) {
    return value ? hashOf(*value, seed) : ::qHash(0, seed);
}

/// Hashes all fields of a record, each with the previous hash as its seed.
template <JSONRecord Record> size_t hashFields(const Record &record, size_t seed) {
    std::apply([&](const auto &...field) { ((seed = hashOf(record.*field.member, seed)), ...); },
               JSONFields<Record>::table);
    return seed;
}

} // namespace

qsizetype Project::indexOfVideo(const QString &videoId) const {
    for (qsizetype index = 0; index < videos.size(); ++index) {
        if (videos.at(index)->id == videoId) {
            return index;
        }
    }
    return -1;
}

qsizetype Project::subclipCount() const {
    qsizetype count = 0;
    for (const VideoItem &video : videos) {
        count += video->subclips.size();
    }
    return count;
}

bool Project::hasSelects() const {
    const auto isSelected = [](const Subclip &subclip) { return subclip.selectedForExport; };
    return std::ranges::any_of(videos, [&](const VideoItem &video) {
        return video->selectedForExport || std::ranges::any_of(video->subclips, isSelected);
    });
}

QString newIdentifier() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

QString projectFolder(const QString &projectFile) {
    return paths::parentFolder(projectFile);
}

QString resolvedAgainstProject(const QString &path, const QString &projectFile) {
    return path.startsWith(QLatin1Char('/')) ? path
                                             : paths::joined(projectFolder(projectFile), path);
}

QString mediaFolder(const QString &projectFile) {
    return paths::joined(projectFolder(projectFile), QStringLiteral("media"));
}

QString cacheRoot(const QString &projectFile) {
    return paths::joined(projectFolder(projectFile), QStringLiteral(".corvane-cache"));
}

size_t qHash(const Subclip &record, size_t seed) {
    return hashFields(record, seed);
}
size_t qHash(const VideoRecord &record, size_t seed) {
    return hashFields(record, seed);
}
size_t qHash(const ExportNamingOptions &record, size_t seed) {
    return hashFields(record, seed);
}
size_t qHash(const ExportBatch &record, size_t seed) {
    return hashFields(record, seed);
}
size_t qHash(const Project &record, size_t seed) {
    return hashFields(record, seed);
}

} // namespace corvane
