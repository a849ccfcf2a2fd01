#include "transfer/VettedSources.h"

#include "platform/Paths.h"
#include "transfer/AVExportSession.h"

namespace corvane {

using AVExportSession::SessionError;

/// A private copy of a source in an open folder. The destructor removes it.
class VettedCopy {
  public:
    VettedCopy(const QString &source, const ImportCopier::SourceRoot &root, OpenFolder folder)
        : m_source(source),
          m_root(root),
          m_copy{.folder = std::move(folder), .name = nameFor(source)} {}
    ~VettedCopy() {
        try {
            fileSystem().removeAt(m_copy.folder.descriptor(), m_copy.name);
        } catch (const FileError &) {
            // Ignored: there is no copy yet, or the hidden file stays.
        }
    }
    Q_DISABLE_COPY_MOVE(VettedCopy)

    QString path() const { return m_copy.folder.anchoredPath(m_copy.name); }
    bool isOf(const QString &source, const ImportCopier::SourceRoot &root) const {
        return m_source == source && m_root.identity == root.identity;
    }

    void create(const std::stop_token &stop) const;

  private:
    static QString nameFor(const QString &source) {
        const QString extension = paths::extension(source);
        return ImportCopier::temporaryName(QStringLiteral(".cv-transcode-src."),
                                           extension.isEmpty() ? QStringLiteral("mov") : extension);
    }

    QString m_source;
    ImportCopier::SourceRoot m_root;
    Destination m_copy;
};

void VettedCopy::create(const std::stop_token &stop) const {
    using Kind = ImportCopier::CopyError::Kind;
    try {
        // Never synced: it isn't needed after a power cut.
        ImportCopier::copy(m_source, m_copy, m_root, {}, stop,
                           {.durability = Durability::Later, .isPrivate = true});
    } catch (const Cancelled &) {
        throw SessionError::cancelled();
    } catch (const ImportCopier::CopyError &error) {
        switch (error.kind()) {
        case Kind::sourceRootChanged:
            throw SessionError::sourceIdentityChanged(m_source);
        case Kind::sourceContentChanged:
            throw SessionError::sourceContentChanged(m_source);
        default:
            throw SessionError::exportFailed(error.description());
        }
    }
}

VettedSources::VettedSources() = default;

VettedSources::~VettedSources() = default;

QString VettedSources::copyOf(const QString &source, const ImportCopier::SourceRoot &root,
                              const OpenFolder &folder, const std::stop_token &stop) {
    if (!m_latest || !m_latest->isOf(source, root)) {
        m_latest.reset();
        auto copy = std::make_unique<VettedCopy>(source, root, folder);
        copy->create(stop);
        m_latest = std::move(copy);
    }
    return m_latest->path();
}

void VettedSources::clear() {
    m_latest.reset();
}

} // namespace corvane
