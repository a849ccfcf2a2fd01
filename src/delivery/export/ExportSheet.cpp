#include "delivery/export/ExportSheet.h"

#include "delivery/DeliveryTexts.h"
#include "delivery/export/ExportTexts.h"
#include "delivery/Segments.h"
#include "platform/Paths.h"

namespace corvane {

namespace {

constexpr std::array<segments::Segment<OutputMode>, 3> kExportOutputs{{
    {OutputMode::primaryOnly, "Primary only", "Source-quality export only."},
    {OutputMode::primaryAndHd, "Primary + HD",
     "Primary export plus a 1080p H.264 deliverable in /HD/. HD copies are deliverables, NOT "
     "proxies."},
    {OutputMode::hdOnly, "HD only", "1080p H.264 deliverable only — no source-quality export."},
}};

struct ShowExportRow {
    DeliveryResult operator()(const ExportRowOutcome &outcome) const {
        return {.outcome = DeliveryResult::Outcome::succeeded,
                .name = paths::lastComponent(outcome.destinationPath),
                .note = ExportTexts::note(outcome),
                .reason = outcome.hdError.value_or(QString()),
                .path = outcome.destinationPath};
    }
    DeliveryResult operator()(const ExportRowFailure &failure) const {
        return {.outcome = failure.cancelled ? DeliveryResult::Outcome::cancelled
                                             : DeliveryResult::Outcome::failed,
                .name = paths::lastComponent(failure.destinationPath),
                .error = failure.error};
    }
};

} // namespace

ExportSheet::ExportSheet(ExportViewModel &flow, ProjectStore &store, FilePanels &panels,
                         Clock &clock, QObject *parent)
    : DeliverySheet(
          {.nothing = QStringLiteral("Nothing to export. Mark clips with the S flag in Review (or "
                                     "set up subclips), then come back here."),
           .folderPanelMessage = QStringLiteral("Choose the output folder"),
           .transcodeHelp = QStringLiteral("H.264/AAC re-encode at HighestQuality preset. "
                                           "Frame-accurate trims; output is .mp4 always."),
           .handlesHelp = QStringLiteral("Extra time before in-point and after out-point. Useful "
                                         "for room tone or NLE re-trim. Skipped for whole-clip "
                                         "rows.")},
          flow, store, panels, clock, parent),
      m_flow(flow) {}

DeliveryChoice ExportSheet::output() const {
    return segments::choice(kExportOutputs, m_flow.choices().outputMode);
}

void ExportSheet::chooseOutput(int index) {
    if (const auto output = segments::valueAt(kExportOutputs, index)) {
        m_flow.setOutputMode(*output);
    }
}

QList<DeliveryRow> ExportSheet::plan(const Project &project) {
    const QList<ExportRowJob> jobs = m_flow.planRows(project, false);
    m_countLine = ExportTexts::countLine(countSelects(project, m_flow.choices()), jobs.size());
    QList<DeliveryRow> rows;
    rows.reserve(jobs.size());
    for (const ExportRowJob &job : jobs) {
        rows.append(
            {.id = job.id, .symbol = DeliveryTexts::symbol(job.kind), .name = job.proposedName});
    }
    return rows;
}

QString ExportSheet::obstacle() const {
    if (!m_flow.choices().outputFolder) {
        return QStringLiteral("Choose an output folder first.");
    }
    return hasRows() ? QString() : QStringLiteral("There is nothing to export.");
}

QString ExportSheet::progressDetails() const {
    return ExportTexts::rowLine(*m_flow.progress());
}

DeliveryResultTexts ExportSheet::resultTexts() const {
    const ExportBatchResult &result = *m_flow.result();
    DeliveryResultTexts texts = countsAndRows(result, ShowExportRow());
    texts.headline = ExportTexts::headline(result);
    texts.folder = m_flow.runInput()->outputFolder;
    if (result.manifestSidecarPath) {
        texts.path = *result.manifestSidecarPath;
        texts.line = QStringLiteral("Manifest: ") + paths::lastComponent(texts.path);
    }
    texts.errorLine = result.manifestError.value_or(QString());
    return texts;
}

} // namespace corvane
