#include "platform/Paths.h"
#include "trust/PathSafety.h"

#include <QMimeDatabase>
#include <QSet>

#include <mutex>
#include <shared_mutex>

namespace corvane::PathSafety {

namespace {

/// A thread-safe cache of which extensions the MIME database knows as media. The database is slow,
/// and a scan tests tens of thousands of files.
class MediaExtensionCache {
  public:
    bool isMedia(const QString &extension) {
        {
            const std::shared_lock lock(m_mutex);
            if (const auto known = m_isMediaByExtension.constFind(extension);
                known != m_isMediaByExtension.cend()) {
                return *known;
            }
        }
        const bool isMedia = queryDatabase(extension);
        const std::scoped_lock lock(m_mutex);
        if (m_isMediaByExtension.size() >= kCapacity) {
            m_isMediaByExtension.clear();
        }
        m_isMediaByExtension.insert(extension, isMedia);
        return isMedia;
    }

  private:
    static constexpr qsizetype kCapacity = 4096; ///< bounds the memory for arbitrary names

    static bool queryDatabase(const QString &extension) {
        const QString type =
            QMimeDatabase()
                .mimeTypeForFile(QStringLiteral("name.") + extension, QMimeDatabase::MatchExtension)
                .name();
        return type.startsWith(QStringLiteral("video/")) ||
               type.startsWith(QStringLiteral("audio/"));
    }

    std::shared_mutex m_mutex;
    QHash<QString, bool> m_isMediaByExtension;
};

} // namespace

bool isMediaFile(const QString &path) {
    static const QSet<QString> kExtensions{
        QStringLiteral("mp4"),  QStringLiteral("m4v"), QStringLiteral("mov"), QStringLiteral("qt"),
        QStringLiteral("mxf"),  QStringLiteral("avi"), QStringLiteral("mkv"), QStringLiteral("mts"),
        QStringLiteral("m2ts"), QStringLiteral("ts")};
    static MediaExtensionCache cache;
    const QString extension = paths::extension(path).toLower();
    return kExtensions.contains(extension) || (!extension.isEmpty() && cache.isMedia(extension));
}

} // namespace corvane::PathSafety
