#include "import/ImportScreenState.h"

#include "import/ImportTexts.h"
#include "platform/Tasks.h"

namespace corvane {

namespace {

const QString kFoundSeparator = QStringLiteral(" \u00b7 ");
const QString kCreatedNote = QStringLiteral(" (created on import)");

} // namespace

ImportScreenState::ImportScreenState(ImportViewModel &import, FilePanels &panels, Clock &clock,
                                     QObject *parent)
    : QObject(parent),
      m_import(import),
      m_panels(panels),
      m_clock(clock),
      m_remaining(clock.monotonic()) {
    followImport();
    followResults();
    m_sources.setPaths(m_import.sourceURLs());
    showRows();
}

void ImportScreenState::followImport() {
    using Import = ImportViewModel;
    connect(&m_import, &Import::sourceURLsChanged, this, [this] {
        m_sources.setPaths(m_import.sourceURLs());
        Q_EMIT sourcesChanged();
    });
    for (const auto changed : {&Import::recursiveChanged, &Import::scanErrorChanged}) {
        connect(&m_import, changed, this, &ImportScreenState::sourcesChanged);
    }
    connect(&m_import, &Import::progressChanged, this, &ImportScreenState::showProgress);
    connect(&m_import, &Import::importedVideoIdsChanged, this, &ImportScreenState::showRecording);
    connect(&m_import, &Import::stageChanged, this, [this] {
        if (stage() == Stage::Importing) {
            startRun();
        }
        Q_EMIT stageChanged();
        Q_EMIT sourcesChanged();
        Q_EMIT includedChanged();
    });
}

void ImportScreenState::followResults() {
    using Import = ImportViewModel;
    connect(&m_import, &Import::previewRowsChanged, this, &ImportScreenState::showRows);
    connect(&m_import, &Import::previewRowChanged, this, [this](int row) {
        m_rows.setRow(row, m_import.previewRows().at(row));
        Q_EMIT includedChanged();
    });
    for (const auto changed : {&Import::modeChanged, &Import::destinationFolderChanged}) {
        connect(&m_import, changed, this, &ImportScreenState::showDestination);
    }
    for (const auto changed : {&Import::leftOutChanged, &Import::refusedCountChanged}) {
        connect(&m_import, changed, this, &ImportScreenState::resultsChanged);
    }
}

// The sheet.

ImportScreenState::Stage ImportScreenState::stage() const {
    switch (m_import.stage()) {
    case ImportViewModel::Stage::sources:
        return Stage::Sources;
    case ImportViewModel::Stage::scanning:
        return Stage::Scanning;
    case ImportViewModel::Stage::results:
        return Stage::Results;
    case ImportViewModel::Stage::importing:
        return Stage::Importing;
    case ImportViewModel::Stage::done:
        return Stage::Done;
    }
    return Stage::Sources;
}

QString ImportScreenState::title() const {
    QString title = QStringLiteral("Import Footage");
    switch (stage()) {
    case Stage::Results:
        return title + QStringLiteral(" \u2014 Results");
    case Stage::Importing:
        return title + QStringLiteral(" \u2014 Importing");
    case Stage::Done:
        return title + QStringLiteral(" \u2014 Done");
    case Stage::Sources:
    case Stage::Scanning:
        break;
    }
    return title;
}

QString ImportScreenState::backText() const {
    const bool hasBack = stage() == Stage::Sources || stage() == Stage::Results;
    return hasBack ? QStringLiteral("Back") : QString();
}

void ImportScreenState::setOpen(bool isOpen) {
    if (m_isOpen != isOpen) {
        m_isOpen = isOpen;
        Q_EMIT isOpenChanged();
    }
}

void ImportScreenState::open() {
    if (stage() != Stage::Importing) {
        startAfresh();
    }
    setOpen(true);
}

void ImportScreenState::startAfresh() {
    m_import.reset();
    addSources(std::exchange(m_waitingSources, {}));
}

void ImportScreenState::openWith(const QStringList &paths) {
    if (!m_isOpen || stage() == Stage::Done) {
        open();
    }
    if (stage() == Stage::Importing) {
        m_waitingSources.append(paths);
        return;
    }
    m_import.cancelScan();
    m_import.backToSources();
    addSources(paths);
}

void ImportScreenState::dismiss() {
    if (canDismiss() && m_isOpen) {
        m_import.cancelScan();
        setOpen(false);
        Q_EMIT dismissed();
    }
}

void ImportScreenState::escape() {
    switch (stage()) {
    case Stage::Scanning:
        m_import.cancelScan();
        break;
    case Stage::Results:
        back();
        break;
    case Stage::Importing:
        cancelImport();
        break;
    case Stage::Sources:
    case Stage::Done:
        dismiss();
        break;
    }
}

void ImportScreenState::back() {
    if (stage() == Stage::Sources) {
        dismiss();
    } else {
        m_import.backToSources();
    }
}

// Results.

void ImportScreenState::showRows() {
    m_rows.setRows(m_import.previewRows());
    Q_EMIT includedChanged();
    showDestination();
}

/// Looks whether the folder is there, so not at every question.
void ImportScreenState::showDestination() {
    m_destinationName = m_import.destinationLabel();
    m_destinationNote.clear();
    if (m_destinationName.endsWith(kCreatedNote)) {
        m_destinationName.chop(kCreatedNote.size());
        m_destinationNote = kCreatedNote.trimmed();
    }
    Q_EMIT resultsChanged();
}

QString ImportScreenState::foundText() const {
    return m_import.foundText().section(kFoundSeparator, 0, 0);
}

QString ImportScreenState::foundNote() const {
    return m_import.foundText().mid(foundText().size());
}

QStringList ImportScreenState::modes() {
    return {QStringLiteral("Use files in place"), QStringLiteral("Copy to project folder")};
}

QString ImportScreenState::destinationPath() const {
    return m_destinationName.isEmpty() ? QString()
                                       : m_import.destinationFolder().value_or(QString());
}

QString ImportScreenState::leftOutNote() const {
    return leftOutText(m_import.leftOut());
}

QString ImportScreenState::refusedNote() const {
    return refusedText(m_import.refusedCount());
}

void ImportScreenState::setMode(int mode) {
    if (mode >= 0 && mode < modes().size()) {
        m_import.setMode(SourceImportMode(mode));
    }
}

void ImportScreenState::toggleRow(int row) {
    m_import.togglePreviewRow(m_rows.idOf(row));
}

void ImportScreenState::beginImport() {
    detach(m_import.beginImport());
}

} // namespace corvane
