#include "delivery/export/ExportSheet.h"

#include "delivery/DeliveryTexts.h"
#include "delivery/export/ExportTexts.h"
#include "delivery/Segments.h"
#include "platform/Paths.h"

namespace corvane {

namespace {

constexpr std::array kExportOutputs{OutputMode::primaryOnly, OutputMode::primaryAndHd,
                                    OutputMode::hdOnly};

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
    : DeliverySheet(flow, store, panels, clock, parent), m_flow(flow) {}

QString ExportSheet::modeHelp() const {
    return ExportTexts::help(m_flow.choices().mode);
}

DeliveryChoice ExportSheet::output() const {
    const auto output = m_flow.choices().outputMode;
    return {segments::labels(kExportOutputs, ExportTexts::label),
            segments::indexOf(kExportOutputs, output), ExportTexts::help(output)};
}

void ExportSheet::chooseOutput(int index) {
    if (const auto output = segments::valueAt(kExportOutputs, index)) {
        m_flow.setOutputMode(*output);
    }
}

QString ExportSheet::handlesHelp() const {
    return ExportTexts::handlesHelp();
}

QString ExportSheet::nothingText() const {
    return ExportTexts::nothingToExport();
}

QString ExportSheet::folderPanelMessage() const {
    return QStringLiteral("Choose the output folder");
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

std::optional<DeliverySheet::ProgressTexts> ExportSheet::progressTexts() const {
    const auto &progress = m_flow.progress();
    if (!progress) {
        return std::nullopt;
    }
    return ProgressTexts{.line = DeliveryTexts::progressLine(progress->index, progress->total,
                                                             progress->currentFilename),
                         .details = ExportTexts::rowLine(*progress)};
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
