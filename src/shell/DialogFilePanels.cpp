#include "shell/DialogFilePanels.h"

#include "platform/Paths.h"

#include <QDir>
#include <QStandardPaths>

namespace corvane {

FilePanels::~FilePanels() = default;

void DialogFilePanels::openProjectFile(Chosen chosen) {
    ask(false, {.choosesProjectFile = true}, std::move(chosen));
}

void DialogFilePanels::save(const SavePanel &panel, Chosen chosen) {
    ask(true, panel, std::move(chosen));
}

void DialogFilePanels::ask(bool isSaving, SavePanel panel, Chosen chosen) {
    if (m_chosen) {
        return;
    }
    m_isSaving = isSaving;
    m_panel = std::move(panel);
    m_chosen = std::move(chosen);
    Q_EMIT asked();
}

QString DialogFilePanels::title() const {
    return m_isSaving ? m_panel.message : QStringLiteral("Open Project");
}

QString DialogFilePanels::acceptLabel() const {
    return m_isSaving ? QStringLiteral("Save") : QStringLiteral("Open");
}

QUrl DialogFilePanels::folder() const {
    if (!m_folder.isEmpty()) {
        return QUrl::fromLocalFile(m_folder);
    }
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QUrl::fromLocalFile(QDir(documents).exists() ? documents : QDir::homePath());
}

QUrl DialogFilePanels::proposedFile() const {
    return m_isSaving
               ? QUrl::fromLocalFile(paths::joined(folder().toLocalFile(), m_panel.proposedName))
               : QUrl();
}

QStringList DialogFilePanels::nameFilters() const {
    return m_panel.choosesProjectFile ? QStringList{QStringLiteral("Corvane projects (*.corvane)")}
                                      : QStringList();
}

QString DialogFilePanels::defaultSuffix() const {
    return m_isSaving && m_panel.choosesProjectFile ? QStringLiteral("corvane") : QString();
}

void DialogFilePanels::accept(const QUrl &url) {
    const Chosen chosen = std::exchange(m_chosen, {});
    if (chosen && url.isLocalFile()) {
        const QString path = paths::standardized(url.toLocalFile());
        m_folder = paths::parentFolder(path);
        chosen(path);
    }
}

void DialogFilePanels::reject() {
    m_chosen = {};
}

} // namespace corvane
