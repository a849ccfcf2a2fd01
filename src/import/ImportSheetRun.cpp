// What the import's sheet shows of a run, and of what it came to.

#include "import/ImportSheet.h"

#include "import/ImportTexts.h"
#include "platform/TextFormat.h"

namespace corvane {

void ImportSheet::startRun() {
    m_meter = ImportMeter(m_import.previewRows(), m_import.mode());
    m_remaining = RemainingTime(m_clock.monotonic());
    m_includedAtStart = m_import.includedCount();
    m_isCancelling = false;
    m_running = {.figure = QStringLiteral("0 / %1").arg(m_includedAtStart)};
    Q_EMIT runningChanged();
}

void ImportSheet::showProgress() {
    const auto &progress = m_import.progress();
    if (stage() != Stage::Importing || !progress) {
        return;
    }
    const bool copies = progress->bytesTotal > 0 && m_import.mode() == SourceImportMode::copied;
    if (m_import.importedVideoIds().isEmpty()) {
        m_meter.copying(progress->index, progress->bytesDone);
    } else {
        m_meter.readingMetadata(progress->index, progress->total);
    }
    const double fraction = m_meter.fraction();
    publish({.fileName = inOneLine(progress->currentFilename),
             .figure = QStringLiteral("%1 / %2").arg(progress->index).arg(progress->total),
             .fraction = fraction,
             .details = copies ? formattedByteCount(progress->bytesDone) + QStringLiteral(" / ") +
                                     formattedByteCount(progress->bytesTotal)
                               : QString(),
             .timeLeft = m_remaining.text(fraction, m_clock.monotonic())});
}

/// The new clips' contents are read for their grants, and nothing tells how far that is.
void ImportSheet::showRecording() {
    if (stage() != Stage::Importing || m_import.importedVideoIds().isEmpty()) {
        return;
    }
    m_meter.recording();
    publish({.fileName = QStringLiteral("Recording what was imported\u2026"),
             .figure = m_running.figure,
             .fraction = m_meter.fraction()});
}

void ImportSheet::publish(Running running) {
    if (running != m_running) {
        m_running = std::move(running);
        Q_EMIT runningChanged();
    }
}

QString ImportSheet::cancelText() const {
    return m_isCancelling ? QStringLiteral("Cancelling\u2026") : QStringLiteral("Cancel");
}

void ImportSheet::cancelImport() {
    if (stage() == Stage::Importing && !m_isCancelling) {
        m_isCancelling = true;
        m_import.cancelImport();
        Q_EMIT runningChanged();
    }
}

int ImportSheet::notImported() const {
    return m_includedAtStart - m_import.succeededCount() - m_import.failedCount();
}

QVariantList ImportSheet::counters() const {
    QVariantList counters;
    const auto add = [&counters](int count, const char *kind, const char *symbol,
                                 const QString &what) {
        if (count > 0) {
            counters.append(QVariantMap{
                {QStringLiteral("kind"), QString::fromLatin1(kind)},
                {QStringLiteral("symbol"), QString::fromLatin1(symbol)},
                {QStringLiteral("text"), QString::number(count) + QLatin1Char(' ') + what}});
        }
    };
    add(m_import.succeededCount(), "succeeded", "checkmark", QStringLiteral("imported"));
    add(m_import.sidecarsImportedCount(), "sidecars", "plus", QStringLiteral("with sidecar files"));
    add(m_import.skippedCount(), "skipped", "minus", QStringLiteral("skipped"));
    add(m_import.failedCount(), "failed", "xmark", QStringLiteral("failed"));
    return counters;
}

QString ImportSheet::doneNotice() const {
    return m_isCancelling ? cancelledText(notImported()) : QString();
}

QVariantList ImportSheet::failures() const {
    QVariantList failures;
    for (const ImportFailure &failure : m_import.failures()) {
        failures.append(QVariantMap{{QStringLiteral("fileName"), failure.filename},
                                    {QStringLiteral("message"), failure.message}});
    }
    return failures;
}

void ImportSheet::importMore() {
    startAfresh();
}

} // namespace corvane
