// What the import's sheet does with its sources.

#include "import/ImportSheet.h"

#include "platform/Paths.h"
#include "platform/Tasks.h"

#include <QPointer>
#include <QSet>

namespace corvane {

QString ImportSheet::emptyText() {
    return QStringLiteral("No sources yet. Use Choose Folder or Choose Files to add some.");
}

void ImportSheet::setSourcesNotice(const QString &notice) {
    if (m_sourcesNotice != notice) {
        m_sourcesNotice = notice;
        Q_EMIT sourcesChanged();
    }
}

void ImportSheet::chooseFolder() {
    m_panels.chooseFolder({.message = QStringLiteral("Choose a folder of footage to import.")},
                          [self = QPointer(this)](const QString &path) {
                              if (self) {
                                  self->addSources({path});
                              }
                          });
}

void ImportSheet::chooseFiles() {
    m_panels.chooseFiles({.message = QStringLiteral("Choose video or audio files to import.")},
                         [self = QPointer(this)](const QStringList &paths) {
                             if (self) {
                                 self->addSources(paths);
                             }
                         });
}

void ImportSheet::addSources(const QStringList &paths) {
    setSourcesNotice({});
    QStringList sources = m_import.sourceURLs();
    QSet<QString> known(sources.cbegin(), sources.cend());
    for (const QString &given : paths) {
        const QString path = paths::standardized(given);
        if (!given.isEmpty() && !known.contains(path)) {
            known.insert(path);
            sources.append(path);
        }
    }
    m_import.setSources(sources);
}

void ImportSheet::addDropped(const QList<QUrl> &urls) {
    QStringList local;
    for (const QUrl &url : urls) {
        if (url.isLocalFile()) {
            local.append(url.toLocalFile());
        }
    }
    addSources(local);
    if (local.size() < urls.size()) {
        setSourcesNotice(
            QStringLiteral("Only files and folders of this computer can be imported."));
    }
}

void ImportSheet::removeSource(int row) {
    QStringList sources = m_import.sourceURLs();
    if (row >= 0 && row < sources.size()) {
        sources.removeAt(row);
        m_import.setSources(sources);
    }
}

void ImportSheet::scan() {
    setSourcesNotice({});
    detach(m_import.startScan());
}

} // namespace corvane
