#include "import/ImportSourceList.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"

#include <QPointer>
#include <QSet>

namespace corvane {

namespace {

bool isFolderPath(const QString &path) {
    const auto status = fileSystem().targetStatus(path);
    return status && status->type == FileType::Directory;
}

QString symbolOf(const ImportSource &source) {
    return source.isFolder ? QStringLiteral("folder") : QStringLiteral("file");
}

QString removeHelpOf(const ImportSource &source) {
    return inOneLine(QStringLiteral("Remove ") + paths::lastComponent(source.path));
}

} // namespace

ImportSourceList::ImportSourceList(ImportViewModel &import, FilePanels &panels, QObject *parent)
    : ListModel({{PathRole, "path", [](const auto &source) { return inOneLine(source.path); }},
                 {SymbolRole, "symbol", symbolOf},
                 {RemoveHelpRole, "removeHelp", removeHelpOf}},
                parent),
      m_import(import),
      m_panels(panels) {
    connect(&m_import, &ImportViewModel::sourcesChanged, this, &ImportSourceList::update);
    connect(&m_import, &ImportViewModel::stageChanged, this, [this] { setNotice({}); });
    update();
}

/// Checks only new paths for being a folder; until then a name without an extension is taken for
/// one.
void ImportSourceList::update() {
    QHash<QString, ImportSource> known;
    for (const ImportSource &source : rows()) {
        known.insert(source.path, source);
    }
    QList<ImportSource> sources;
    QStringList added;
    for (const QString &path : m_import.sourceURLs()) {
        const auto source = known.constFind(path);
        if (source == known.cend()) {
            added.append(path);
        }
        sources.append(source != known.cend()
                           ? *source
                           : ImportSource{path, paths::extension(path).isEmpty()});
    }
    setRows(sources);
    if (!added.isEmpty()) {
        detach(checkTypes(added));
    }
}

QCoro::Task<> ImportSourceList::checkTypes(QStringList paths) {
    const QPointer self(this);
    const QHash<QString, bool> areFolders = co_await userInitiatedExecutor().run([paths] {
        QHash<QString, bool> found;
        for (const QString &path : paths) {
            found.insert(path, isFolderPath(path));
        }
        return found;
    });
    if (!self) {
        co_return;
    }
    QList<ImportSource> sources = rows();
    for (ImportSource &source : sources) {
        source.isFolder = areFolders.value(source.path, source.isFolder);
    }
    setRows(sources);
}

void ImportSourceList::setNotice(const QString &notice) {
    if (m_notice != notice) {
        m_notice = notice;
        Q_EMIT noticeChanged();
    }
}

void ImportSourceList::chooseFolder() {
    m_panels.chooseFolder({.message = QStringLiteral("Choose a folder of footage to import.")},
                          [self = QPointer(this)](const QString &path) {
                              if (self) {
                                  self->add({path});
                              }
                          });
}

void ImportSourceList::chooseFiles() {
    m_panels.chooseFiles({.message = QStringLiteral("Choose video or audio files to import.")},
                         [self = QPointer(this)](const QStringList &paths) {
                             if (self) {
                                 self->add(paths);
                             }
                         });
}

void ImportSourceList::add(const QStringList &paths) {
    setNotice({});
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

void ImportSourceList::addDropped(const QList<QUrl> &urls) {
    const QStringList paths = localPaths(urls);
    add(paths);
    if (paths.size() < urls.size()) {
        setNotice(QStringLiteral("Only files and folders of this computer can be imported."));
    }
}

void ImportSourceList::remove(int row) {
    QStringList sources = m_import.sourceURLs();
    if (row >= 0 && row < sources.size()) {
        sources.removeAt(row);
        m_import.setSources(sources);
    }
}

} // namespace corvane
