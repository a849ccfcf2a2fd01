#include "platform/Paths.h"
#include "trust/PathSafety.h"

#include <QMimeDatabase>
#include <QSet>

#include <mutex>
#include <shared_mutex>

namespace corvane::PathSafety {

namespace {

/// What the type database says of extensions. It is asked once for each, because it is slow and a
/// scan asks for tens of thousands of files.
class KnownExtensions {
  public:
    bool isMedia(const QString &extension) {
        {
            const std::shared_lock lock(m_mutex);
            if (const auto known = m_known.constFind(extension); known != m_known.cend()) {
                return *known;
            }
        }
        const bool isMedia = ask(extension);
        const std::scoped_lock lock(m_mutex);
        if (m_known.size() >= kMost) {
            m_known.clear();
        }
        m_known.insert(extension, isMedia);
        return isMedia;
    }

  private:
    /// More than anybody's files have; names that are all extension don't fill the memory.
    static constexpr qsizetype kMost = 4096;

    static bool ask(const QString &extension) {
        const QString type =
            QMimeDatabase()
                .mimeTypeForFile(QStringLiteral("name.") + extension, QMimeDatabase::MatchExtension)
                .name();
        return type.startsWith(QStringLiteral("video/")) ||
               type.startsWith(QStringLiteral("audio/"));
    }

    std::shared_mutex m_mutex;
    QHash<QString, bool> m_known;
};

} // namespace

bool isMediaFile(const QString &path) {
    static const QSet<QString> kExtensions{
        QStringLiteral("mp4"),  QStringLiteral("m4v"), QStringLiteral("mov"), QStringLiteral("qt"),
        QStringLiteral("mxf"),  QStringLiteral("avi"), QStringLiteral("mkv"), QStringLiteral("mts"),
        QStringLiteral("m2ts"), QStringLiteral("ts")};
    static KnownExtensions known;
    const QString extension = paths::lowerCaseExtension(path);
    return kExtensions.contains(extension) || (!extension.isEmpty() && known.isMedia(extension));
}

} // namespace corvane::PathSafety
