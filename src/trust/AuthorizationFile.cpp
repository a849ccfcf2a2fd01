#include "trust/AuthorizationFile.h"

#include "platform/AtomicWrite.h"
#include "platform/ISODate.h"
#include "platform/Paths.h"
#include "trust/FolderIdentities.h"

namespace corvane {

template <> struct JSONCodec<QSet<QString>> {
    static void decode(JSONView view, QSet<QString> &set) {
        const auto list = decodeJSON<QStringList>(view);
        set = QSet<QString>(list.cbegin(), list.cend());
    }
    static void encode(JSONWriter &writer, const QSet<QString> &set) {
        JSONCodec<QStringList>::encode(writer, set.values());
    }
};

namespace {

using PathSets = AuthorizationTables::PathSets;
using PathLists = QHash<QString, QStringList>;

/// The JSON object. `Paths` is the type of "paths" in the current or in the older format.
template <typename Paths> struct RegistryFile {
    Paths paths;
    std::optional<QHash<QString, MediaRootRecord>> mediaRoots;
    std::optional<PathSets> pendingLegacy;
    std::optional<PathSets> contentMismatch;
};

using CurrentRegistryFile = RegistryFile<QHash<QString, AuthorizedPaths>>;
using LegacyPathsRegistryFile = RegistryFile<PathLists>;

} // namespace

template <typename Paths> struct JSONFields<RegistryFile<Paths>> {
    using File = RegistryFile<Paths>;
    static constexpr auto table =
        std::tuple(jsonField("paths", &File::paths), jsonField("mediaRoots", &File::mediaRoots),
                   jsonField("pendingLegacy", &File::pendingLegacy),
                   jsonField("contentMismatch", &File::contentMismatch));
};

namespace {

QHash<QString, AuthorizedPaths> withCurrentIdentities(const PathLists &lists) {
    FolderIdentities identities;
    QHash<QString, AuthorizedPaths> tables;
    for (const auto &[key, paths] : lists.asKeyValueRange()) {
        AuthorizedPaths &table = tables[key];
        for (const QString &listed : paths) {
            const QString path = paths::standardized(listed);
            table.insert(path, identities.ofParent(path));
        }
    }
    return tables;
}

/// Returns nullopt if the JSON doesn't have the format of `File`.
template <typename File> std::optional<File> decoded(JSONView view) {
    try {
        return decodeJSON<File>(view);
    } catch (const JSONDecodeError &) {
        return std::nullopt;
    }
}

template <typename Value> Value orEmpty(const std::optional<Value> &value) {
    return value.value_or(Value());
}

AuthorizationTables decodeAnyFormat(JSONView view) {
    if (auto file = decoded<CurrentRegistryFile>(view)) {
        return {std::move(file->paths), orEmpty(file->mediaRoots), orEmpty(file->pendingLegacy),
                orEmpty(file->contentMismatch)};
    }
    if (auto file = decoded<LegacyPathsRegistryFile>(view)) {
        return {withCurrentIdentities(file->paths),
                orEmpty(file->mediaRoots),
                orEmpty(file->pendingLegacy),
                {}};
    }
    if (const auto lists = decoded<PathLists>(view)) {
        return {.authorizedPaths = withCurrentIdentities(*lists)};
    }
    throw Failure(QStringLiteral("it is damaged, or a newer version of Corvane wrote it"));
}

constexpr qint64 kLimit = MediaSourceAuthorization::kFileLimit;

} // namespace

AuthorizationTables AuthorizationFile::read(const QString &file) {
    QByteArray bytes;
    try {
        bytes = readAll(file, kLimit);
    } catch (const FileError &error) {
        if (error.isMissingFile()) {
            return {};
        }
        throw;
    }
    if (bytes.size() > kLimit) {
        throw Failure(QStringLiteral("it is larger than 8 MB"));
    }
    return decodeAnyFormat(JSONDocument::parse(std::move(bytes)).root());
}

qint64 AuthorizationFile::write(const AuthorizationTables &tables, const QString &file) {
    const CurrentRegistryFile stored{tables.authorizedPaths, tables.authorizedMediaRoots,
                                     tables.pendingLegacyPaths, tables.contentMismatchPaths};
    const QByteArray bytes = encodeJSON(stored, JSONWriter::Style::Compact);
    if (bytes.size() > kLimit) {
        throw Failure(QStringLiteral("the file would grow past the 8 MB that can be read again"));
    }
    writeAtomically(file, bytes);
    return bytes.size();
}

QString AuthorizationFile::setAside(const QString &file, const QDateTime &now) {
    const QString stamp = isoDate::toText(now).replace(QLatin1Char(':'), QLatin1Char('-'));
    const QString name = paths::lastComponent(file);
    const auto [stem, extension] = paths::split(name);
    const QString kept = QStringLiteral("%1.unreadable-%2%3").arg(stem, stamp, extension);
    const QString folder = paths::parentFolder(file);
    try {
        fileSystem().renameAt(OpenFolder::at(folder).descriptor(), name, kept, Placing::mustBeFree);
    } catch (const FileError &error) {
        if (!error.isMissingFile()) {
            throw;
        }
    }
    return paths::joined(folder, kept);
}

} // namespace corvane
