#include "import/ImportSheet.h"

#include "import/ImportTexts.h"
#include "platform/Tasks.h"

namespace corvane {

namespace {

const QString kFoundSeparator = QStringLiteral(" \u00b7 ");
const QString kCreatedNote = QStringLiteral(" (created on import)");

} // namespace

ImportSheet::ImportSheet(ImportViewModel &import, FilePanels &panels, Clock &clock, QObject *parent)
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

void ImportSheet::followImport() {
    using Import = ImportViewModel;
    connect(&m_import, &Import::sourceURLsChanged, this, [this] {
        m_sources.setPaths(m_import.sourceURLs());
        Q_EMIT sourcesChanged();
    });
    for (const auto changed : {&Import::recursiveChanged, &Import::scanErrorChanged}) {
        connect(&m_import, changed, this, &ImportSheet::sourcesChanged);
    }
    connect(&m_import, &Import::progressChanged, this, &ImportSheet::showProgress);
    connect(&m_import, &Import::importedVideoIdsChanged, this, &ImportSheet::showRecording);
    connect(&m_import, &Import::stageChanged, this, [this] {
        if (stage() == Stage::Importing) {
            startRun();
        }
        Q_EMIT stageChanged();
        Q_EMIT sourcesChanged();
        Q_EMIT includedChanged();
    });
}

void ImportSheet::followResults() {
    using Import = ImportViewModel;
    connect(&m_import, &Import::previewRowsChanged, this, &ImportSheet::showRows);
    connect(&m_import, &Import::previewRowChanged, this, [this](int row) {
        m_rows.setRow(row, m_import.previewRows().at(row));
        Q_EMIT includedChanged();
    });
    for (const auto changed : {&Import::modeChanged, &Import::destinationFolderChanged}) {
        connect(&m_import, changed, this, &ImportSheet::showDestination);
    }
    for (const auto changed : {&Import::leftOutChanged, &Import::refusedCountChanged}) {
        connect(&m_import, changed, this, &ImportSheet::resultsChanged);
    }
}

// The sheet.

ImportSheet::Stage ImportSheet::stage() const {
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

QString ImportSheet::title() const {
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

QString ImportSheet::backText() const {
    const bool hasBack = stage() == Stage::Sources || stage() == Stage::Results;
    return hasBack ? QStringLiteral("Back") : QString();
}

void ImportSheet::setOpen(bool isOpen) {
    if (m_isOpen != isOpen) {
        m_isOpen = isOpen;
        Q_EMIT isOpenChanged();
    }
}

void ImportSheet::open() {
    if (stage() != Stage::Importing) {
        startAfresh();
    }
    setOpen(true);
}

void ImportSheet::startAfresh() {
    m_import.reset();
    addSources(std::exchange(m_waitingSources, {}));
}

void ImportSheet::openWith(const QStringList &paths) {
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

void ImportSheet::dismiss() {
    if (canDismiss() && m_isOpen) {
        m_import.cancelScan();
        setOpen(false);
        Q_EMIT dismissed();
    }
}

void ImportSheet::escape() {
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

void ImportSheet::back() {
    if (stage() == Stage::Sources) {
        dismiss();
    } else {
        m_import.backToSources();
    }
}

// Results.

void ImportSheet::showRows() {
    m_rows.setRows(m_import.previewRows());
    Q_EMIT includedChanged();
    showDestination();
}

/// Looks whether the folder is there, so not at every question.
void ImportSheet::showDestination() {
    m_destinationName = m_import.destinationLabel();
    m_destinationNote.clear();
    if (m_destinationName.endsWith(kCreatedNote)) {
        m_destinationName.chop(kCreatedNote.size());
        m_destinationNote = kCreatedNote.trimmed();
    }
    Q_EMIT resultsChanged();
}

QString ImportSheet::foundText() const {
    return m_import.foundText().section(kFoundSeparator, 0, 0);
}

QString ImportSheet::foundNote() const {
    return m_import.foundText().mid(foundText().size());
}

QStringList ImportSheet::modes() {
    return {QStringLiteral("Use files in place"), QStringLiteral("Copy to project folder")};
}

QString ImportSheet::destinationPath() const {
    return m_destinationName.isEmpty() ? QString()
                                       : m_import.destinationFolder().value_or(QString());
}

QString ImportSheet::leftOutNote() const {
    return leftOutText(m_import.leftOut());
}

QString ImportSheet::refusedNote() const {
    return refusedText(m_import.refusedCount());
}

void ImportSheet::setMode(int mode) {
    if (mode >= 0 && mode < modes().size()) {
        m_import.setMode(SourceImportMode(mode));
    }
}

void ImportSheet::toggleRow(int row) {
    m_import.togglePreviewRow(m_rows.idOf(row));
}

void ImportSheet::beginImport() {
    detach(m_import.beginImport());
}

} // namespace corvane
