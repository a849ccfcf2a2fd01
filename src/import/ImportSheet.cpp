#include "import/ImportSheet.h"

#include "import/ImportTexts.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"
#include "session/SessionTexts.h"

#include <QMetaEnum>
#include <QPointer>

namespace corvane {

namespace {

using Stage = ImportViewModel::Stage;

QVariantList counterMaps(const ImportResult &result) {
    QVariantList counters;
    const auto add = [&counters](int count, const char *kind, const char *symbol,
                                 const char *label) {
        if (count > 0) {
            counters.append(
                QVariantMap{{QStringLiteral("kind"), QString::fromLatin1(kind)},
                            {QStringLiteral("symbol"), QString::fromLatin1(symbol)},
                            {QStringLiteral("text"),
                             QStringLiteral("%1 %2").arg(count).arg(QLatin1String(label))}});
        }
    };
    add(result.succeededCount, "succeeded", "checkmark", "imported");
    add(result.sidecarsImportedCount, "sidecars", "plus", "with sidecar files");
    add(result.skippedCount, "skipped", "minus", "skipped");
    add(result.failedCount, "failed", "xmark", "failed");
    return counters;
}

} // namespace

ImportSheet::ImportSheet(ImportViewModel &import, FilePanels &panels, Clock &clock, QObject *parent)
    : QObject(parent),
      m_import(import),
      m_clock(clock),
      m_sources(import, panels),
      m_remaining(clock.monotonic()) {
    connect(&m_import, &ImportViewModel::stageChanged, this, &ImportSheet::updateStage);
    connect(&m_import, &ImportViewModel::sourcesChanged, this, &ImportSheet::sourcesChanged);
    connect(&m_import, &ImportViewModel::previewChanged, this, &ImportSheet::updatePreview);
    connect(&m_import, &ImportViewModel::includedChanged, this, &ImportSheet::updateIncluded);
    connect(&m_import, &ImportViewModel::progressChanged, this, &ImportSheet::updateRun);
    updatePreview();
}

void ImportSheet::updateStage() {
    if (stage() == Stage::importing) {
        startRun();
    }
    Q_EMIT stageChanged();
    Q_EMIT sourcesChanged();
    Q_EMIT previewChanged();
}

QString ImportSheet::stageName() const {
    return QString::fromLatin1(QMetaEnum::fromType<Stage>().valueToKey(int(stage())));
}

QString ImportSheet::title() const {
    const QString title = QStringLiteral("Import Footage");
    if (stage() == Stage::results) {
        return title + QStringLiteral(" — Results");
    }
    return stage() == Stage::done ? title + QStringLiteral(" — Done") : title;
}

QString ImportSheet::backText() const {
    const bool canGoBack = stage() == Stage::sources || stage() == Stage::results;
    return canGoBack ? QStringLiteral("Back") : QString();
}

void ImportSheet::setOpen(bool isOpen) {
    if (m_isOpen != isOpen) {
        m_isOpen = isOpen;
        Q_EMIT isOpenChanged();
    }
}

void ImportSheet::open() {
    if (stage() != Stage::importing) {
        startAgain();
    }
    setOpen(true);
}

void ImportSheet::startAgain() {
    m_import.reset();
    m_sources.add(std::exchange(m_nextSources, {}));
}

void ImportSheet::openWith(const QStringList &paths) {
    if (!m_isOpen || stage() == Stage::done) {
        open();
    }
    if (stage() == Stage::importing) {
        m_nextSources.append(paths);
        return;
    }
    m_import.cancelScan();
    m_import.backToSources();
    m_sources.add(paths);
}

void ImportSheet::dismiss() {
    if (stage() != Stage::importing) {
        m_import.cancelScan();
        setOpen(false);
    }
}

void ImportSheet::escape() {
    switch (stage()) {
    case Stage::scanning:
        m_import.cancelScan();
        break;
    case Stage::results:
        back();
        break;
    case Stage::importing:
        cancelImport();
        break;
    case Stage::sources:
    case Stage::done:
        dismiss();
        break;
    }
}

void ImportSheet::back() {
    if (stage() == Stage::sources) {
        dismiss();
    } else {
        m_import.backToSources();
    }
}

void ImportSheet::scan() {
    detach(m_import.startScan());
}

void ImportSheet::updatePreview() {
    const QList<ImportPreviewRow> &rows = m_import.previewRows();
    const ImportPreviewTexts before = m_preview;
    m_preview = {.found = foundText(rows),
                 .alreadyImported = alreadyImportedText(rows),
                 .leftOut = leftOutText(m_import.leftOut()),
                 .refused = refusedText(m_import.refusedCount())};
    const auto &folder = m_import.destinationFolder();
    if (folder && m_import.mode() == SourceImportMode::copied) {
        m_preview.destination = paths::lastComponent(*folder) + QStringLiteral(" folder");
        m_preview.destinationPath = *folder;
        if (before.destinationPath == *folder) {
            m_preview.destinationNote = before.destinationNote;
        }
        detach(checkDestination(*folder));
    }
    updateIncluded();
}

QCoro::Task<> ImportSheet::checkDestination(QString folder) {
    const QPointer self(this);
    const bool exists = co_await userInitiatedExecutor().run(
        [folder] { return fileSystem().linkStatus(folder).has_value(); });
    if (self && m_preview.destinationPath == folder) {
        m_preview.destinationNote = exists ? QString() : QStringLiteral("(created on import)");
        Q_EMIT previewChanged();
    }
}

void ImportSheet::updateIncluded() {
    m_rows.setRows(m_import.previewRows());
    m_preview.included = QStringLiteral("%1 included").arg(m_import.includedCount());
    Q_EMIT previewChanged();
}

QStringList ImportSheet::modes() {
    return {QStringLiteral("Use files in place"), QStringLiteral("Copy to project folder")};
}

void ImportSheet::setMode(int mode) {
    if (mode >= 0 && mode < modes().size()) {
        m_import.setMode(SourceImportMode(mode));
    }
}

void ImportSheet::toggleRow(int row) {
    if (row >= 0 && row < m_rows.count()) {
        m_import.togglePreviewRow(m_rows.row(row).id);
    }
}

void ImportSheet::beginImport() {
    detach(m_import.beginImport());
}

void ImportSheet::startRun() {
    m_meter = ImportMeter(m_import.previewRows(), m_import.mode());
    m_remaining = RemainingTime(m_clock.monotonic());
    m_includedAtStart = m_import.includedCount();
    m_isCancelling = false;
    m_run = {.figure = QStringLiteral("0 / %1").arg(m_includedAtStart)};
    Q_EMIT runChanged();
}

void ImportSheet::updateRun() {
    const auto progress = m_import.progress();
    if (!progress) {
        return;
    }
    m_meter.update(*progress);
    ImportRunTexts run{.fileName = inOneLine(progress->currentFilename),
                       .figure =
                           QStringLiteral("%1 / %2").arg(progress->index).arg(progress->total),
                       .fraction = m_meter.fraction()};
    const bool isRecording = progress->phase == ImportProgress::Phase::recording;
    if ((m_import.mode() == SourceImportMode::copied || isRecording) && progress->bytesTotal > 0) {
        run.details = formattedByteCount(progress->bytesDone) + QStringLiteral(" / ") +
                      formattedByteCount(progress->bytesTotal);
    }
    run.timeLeft = m_remaining.text(run.fraction, m_clock.monotonic());
    if (run != m_run) {
        m_run = std::move(run);
        Q_EMIT runChanged();
    }
}

QString ImportSheet::cancelText() const {
    return m_isCancelling ? QStringLiteral("Cancelling…") : QStringLiteral("Cancel");
}

void ImportSheet::cancelImport() {
    if (stage() == Stage::importing && !m_isCancelling) {
        m_isCancelling = true;
        m_import.cancelImport();
        Q_EMIT runChanged();
    }
}

ImportResultTexts ImportSheet::result() const {
    const ImportResult &result = m_import.result();
    ImportResultTexts texts{.counters = counterMaps(result)};
    QStringList notices;
    if (m_isCancelling) {
        notices.append(cancelledText(m_includedAtStart - result.succeededCount - result.failedCount,
                                     result.pendingCount));
    }
    if (result.backupError) {
        notices.append(SessionTexts::backupLine(result.backupError));
    }
    texts.notice = notices.join(QLatin1Char('\n'));
    for (const ImportFailure &failure : m_import.failures()) {
        texts.failures.append(QVariantMap{{QStringLiteral("fileName"), failure.filename},
                                          {QStringLiteral("message"), failure.message}});
    }
    return texts;
}

} // namespace corvane
