#include "shell/DialogFilePanels.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "platform/Tasks.h"

#include <QDir>
#include <QPointer>
#include <QStandardPaths>

#include <algorithm>

namespace corvane {

namespace {

FilePanels::ChosenFiles acceptFirst(FilePanels::Chosen chosen) {
    return [chosen = std::move(chosen)](const QStringList &paths) { chosen(paths.first()); };
}

} // namespace

DialogFilePanels::DialogFilePanels(QObject *parent) : QObject(parent) {
    detach(findDocuments());
}

QCoro::Task<> DialogFilePanels::findDocuments() {
    const QPointer self(this);
    const QString folder = co_await userInitiatedExecutor().run([] {
        const QString path = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        return fileSystem().targetStatus(path) ? path : QString();
    });
    if (self) {
        m_documents = folder;
    }
}

void DialogFilePanels::openProjectFile(Chosen chosen) {
    request(Kind::OpenFile, {.message = QStringLiteral("Open Project"), .choosesProjectFile = true},
            QStringLiteral("Open"), acceptFirst(std::move(chosen)));
}

void DialogFilePanels::save(const SavePanel &panel, Chosen chosen) {
    request(Kind::SaveFile, panel, QStringLiteral("Save"), acceptFirst(std::move(chosen)));
}

void DialogFilePanels::chooseFolder(const ChoosePanel &panel, Chosen chosen) {
    if (!m_chosen && !panel.startFolder.isEmpty()) {
        m_folder = panel.startFolder;
    }
    request(Kind::OpenFolder, {.message = panel.message}, panel.acceptLabel,
            acceptFirst(std::move(chosen)));
}

void DialogFilePanels::chooseFiles(const ChoosePanel &panel, ChosenFiles chosen) {
    if (!m_chosen && !panel.startFolder.isEmpty()) {
        m_folder = panel.startFolder;
    }
    request(Kind::OpenFiles, {.message = panel.message}, panel.acceptLabel, std::move(chosen));
}

void DialogFilePanels::request(Kind kind, SavePanel panel, const QString &acceptLabel,
                               ChosenFiles chosen) {
    if (m_chosen) {
        return;
    }
    m_kind = kind;
    m_panel = std::move(panel);
    m_acceptLabel = acceptLabel;
    m_chosen = std::move(chosen);
    Q_EMIT dialogRequested();
}

QUrl DialogFilePanels::folder() const {
    if (!m_folder.isEmpty()) {
        return QUrl::fromLocalFile(m_folder);
    }
    return QUrl::fromLocalFile(m_documents.isEmpty() ? QDir::homePath() : m_documents);
}

QUrl DialogFilePanels::proposedFile() const {
    return m_kind == Kind::SaveFile
               ? QUrl::fromLocalFile(paths::joined(folder().toLocalFile(), m_panel.proposedName))
               : QUrl();
}

QStringList DialogFilePanels::nameFilters() const {
    return m_panel.choosesProjectFile ? QStringList{QStringLiteral("Corvane projects (*.corvane)")}
                                      : QStringList();
}

QString DialogFilePanels::defaultSuffix() const {
    return m_kind == Kind::SaveFile && m_panel.choosesProjectFile ? QStringLiteral("corvane")
                                                                  : QString();
}

void DialogFilePanels::accept(const QList<QUrl> &urls) {
    const ChosenFiles chosen = std::exchange(m_chosen, {});
    QStringList files = localPaths(urls);
    std::ranges::transform(files, files.begin(), paths::standardized);
    if (chosen && !files.isEmpty()) {
        m_folder = m_kind == Kind::OpenFolder ? files.first() : paths::parentFolder(files.first());
        chosen(files);
    }
}

void DialogFilePanels::reject() {
    m_chosen = {};
}

} // namespace corvane
