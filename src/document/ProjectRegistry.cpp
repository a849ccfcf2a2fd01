#include "document/ProjectRegistry.h"

#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <algorithm>

namespace corvane {

namespace {

/// Far larger than any list that this program writes.
constexpr qint64 kFileLimit = qint64(32) << 20;

} // namespace

ProjectRegistry::ProjectRegistry(const QString &dataFolder, Clock &clock)
    : m_filePath(paths::joined(dataFolder, QStringLiteral("registry.json"))),
      m_clock(clock),
      m_executor(QStringLiteral("ProjectRegistry")) {
    m_executor.post([this, dataFolder] { load(dataFolder); }); // before every other operation
}

void ProjectRegistry::load(const QString &dataFolder) {
    try {
        fileSystem().createFolders(dataFolder);
    } catch (const FileError &) {
        // Writing will fail too; the list then lasts until the process ends.
    }
    try {
        const QByteArray bytes = readAll(m_filePath, kFileLimit);
        m_summaries = decodeJSON<QList<ProjectSummary>>(JSONDocument::parse(bytes).root());
    } catch (const Failure &) {
        // The list stays empty.
    }
}

QCoro::Task<QList<ProjectSummary>> ProjectRegistry::touch(Project project, QString file) {
    co_return co_await m_executor.run([this, project = std::move(project), file,
                                       now = m_clock.now()] {
        m_summaries.removeIf([&](const ProjectSummary &known) { return known.filePath == file; });
        m_summaries.prepend({.id = project.id,
                             .filePath = file,
                             .name = project.name,
                             .lastOpenedAt = now,
                             .videoCount = int(project.videos.size())});
        persist();
        return m_summaries;
    });
}

QCoro::Task<QList<ProjectSummary>> ProjectRegistry::remove(QString path) {
    co_return co_await m_executor.run([this, path] {
        m_summaries.removeIf([&](const ProjectSummary &known) { return known.filePath == path; });
        persist();
        return m_summaries;
    });
}

QCoro::Task<QList<ProjectSummary>> ProjectRegistry::summaries() {
    co_return co_await m_executor.run([this] { return m_summaries; });
}

void ProjectRegistry::persist() const {
    try {
        writeAtomically(m_filePath, encodeJSON(m_summaries));
    } catch (const Failure &) {
        // The list in memory is kept, and the next change writes it again.
    }
}

QList<ProjectSummary> newestFirst(QList<ProjectSummary> summaries) {
    std::ranges::stable_sort(summaries, std::ranges::greater(), &ProjectSummary::lastOpenedAt);
    return summaries;
}

} // namespace corvane
