#include "delivery/export/ExportSheet.h"

#include "delivery/ChoicePlaces.h"
#include "delivery/ExportTexts.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"

namespace corvane {

namespace {

constexpr std::array kExportOutputs{OutputMode::primaryOnly, OutputMode::primaryAndHd,
                                    OutputMode::hdOnly};

DeliveryResult shown(const ExportRowOutcome &outcome) {
    return {.outcome = DeliveryResult::Outcome::succeeded,
            .symbol = ExportTexts::succeededSymbol(),
            .name = paths::lastComponent(outcome.destinationPath),
            .note = ExportTexts::note(outcome),
            .reason = outcome.hdError.value_or(QString()),
            .path = outcome.destinationPath};
}

DeliveryResult shown(const ExportRowFailure &failure) {
    return {.outcome = failure.cancelled ? DeliveryResult::Outcome::cancelled
                                         : DeliveryResult::Outcome::failed,
            .symbol = ExportTexts::failedSymbol(failure.cancelled),
            .name = paths::lastComponent(failure.destinationPath),
            .error = failure.error};
}

template <typename Row> QList<DeliveryResult> shown(const QList<Row> &rows) {
    QList<DeliveryResult> results;
    results.reserve(rows.size());
    for (const Row &row : rows) {
        results.append(shown(row));
    }
    return results;
}

} // namespace

ExportSheet::ExportSheet(ExportViewModel &flow, ProjectStore &store, FilePanels &panels,
                         Clock &clock, QObject *parent)
    : DeliverySheet(store, panels, clock, namingOf(flow), parent), m_flow(flow) {
    connect(&flow, &ExportViewModel::choicesChanged, this, &ExportSheet::noteChoices);
    connect(&flow, &ExportViewModel::progressChanged, this, &ExportSheet::noteRun);
    connect(&flow, &ExportViewModel::cancelStageChanged, this, &ExportSheet::noteRun);
    connect(&flow, &ExportViewModel::stageChanged, this, &ExportSheet::noteStage);
}

NamingFields::Choices ExportSheet::namingOf(ExportViewModel &flow) {
    return {.preset = [&flow] { return flow.choices().namingPreset; },
            .setPreset = [&flow](NamingPreset preset) { flow.setNamingPreset(preset); },
            .naming = [&flow]() -> const ExportNamingOptions & { return flow.choices().naming; },
            .setNaming = [&flow](const ExportNamingOptions &to) { flow.setNaming(to); }};
}

DeliverySheet::Stage ExportSheet::stage() const {
    switch (m_flow.stage()) {
    case ExportViewModel::Stage::configure:
        return Stage::Configure;
    case ExportViewModel::Stage::running:
        return Stage::Running;
    case ExportViewModel::Stage::done:
        break;
    }
    return Stage::Done;
}

QStringList ExportSheet::outputs() const {
    return choicePlaces::labels(kExportOutputs, [](auto mode) { return ExportTexts::label(mode); });
}

QString ExportSheet::handlesHelp() const {
    return ExportTexts::handlesHelp();
}

QString ExportSheet::nothingText() const {
    return ExportTexts::nothingToExport();
}

void ExportSheet::chooseMode(int place) {
    if (const auto mode = modeAt(place)) {
        m_flow.setMode(*mode);
    }
}

void ExportSheet::chooseOutput(int place) {
    if (const auto output = choicePlaces::at(kExportOutputs, place)) {
        m_flow.setOutputMode(*output);
    }
}

void ExportSheet::chooseHandle(int place) {
    if (const auto seconds = handleAt(place)) {
        m_flow.setSubclipHandleSeconds(*seconds);
    }
}

void ExportSheet::resetFlow(const Project &project) {
    m_flow.reset(project);
}

void ExportSheet::startFlow(const Project &project) {
    detach(m_flow.start(project));
}

void ExportSheet::cancelFlow() {
    m_flow.requestCancel();
}

std::optional<QString> ExportSheet::chosenFolder() const {
    return m_flow.choices().outputFolder;
}

void ExportSheet::setChosenFolder(const QString &folder) {
    m_flow.setOutputFolder(folder);
}

QString ExportSheet::folderPanelMessage() const {
    return QStringLiteral("Choose the output folder");
}

DeliverySheet::ChoiceTexts ExportSheet::choiceTexts() const {
    const ExportChoices &choices = m_flow.choices();
    return {.folder = ExportTexts::outputFolder(choices),
            .mode = placeOf(choices.mode),
            .modeHelp = ExportTexts::help(choices.mode),
            .output = choicePlaces::placeOf(kExportOutputs, choices.outputMode),
            .outputHelp = ExportTexts::help(choices.outputMode),
            .handle = placeOfHandle(choices.subclipHandleSeconds)};
}

QList<DeliveryRow> ExportSheet::plan(const Project &project) {
    const QList<ExportRowJob> jobs = m_flow.planRows(project, false);
    m_countLine = ExportTexts::countLine(countSelects(project, m_flow.choices()), jobs.size());
    QList<DeliveryRow> rows;
    rows.reserve(jobs.size());
    for (const ExportRowJob &job : jobs) {
        rows.append(
            {.id = job.id, .symbol = ExportTexts::symbol(job.kind), .name = job.proposedName});
    }
    return rows;
}

QString ExportSheet::obstacle() const {
    if (!m_flow.choices().outputFolder) {
        return QStringLiteral("Choose an output folder first.");
    }
    return hasRows() ? QString() : QStringLiteral("There is nothing to export.");
}

DeliverySheet::RunTexts ExportSheet::runTexts() const {
    RunTexts texts{.fraction = m_flow.overallFraction(),
                   .cancelText = ExportTexts::cancelButton(m_flow.cancelStage()),
                   .canCancel = m_flow.cancelStage() != CancelStage::hard};
    if (const auto &progress = m_flow.progress()) {
        texts.line = ExportTexts::progressLine(*progress);
        texts.percent = ExportTexts::percent(texts.fraction);
        texts.details = ExportTexts::rowLine(*progress);
        texts.timeLeft = remainingTime(texts.fraction);
    } else {
        texts.line = ExportTexts::checkingLine();
    }
    return texts;
}

DeliverySheet::ResultTexts ExportSheet::resultTexts() const {
    const ExportBatchResult &result = *m_flow.result();
    ResultTexts texts{.headline = ExportTexts::headline(result),
                      .backupLine = ExportTexts::backupLine(m_flow.backupError()),
                      .succeeded = int(result.succeeded.size()),
                      .failed = result.failedCount(),
                      .cancelled = result.cancelledCount,
                      .folder = m_flow.runInput()->outputFolder};
    if (result.manifestSidecarPath) {
        texts.place = ExportTexts::manifestLine(result);
        texts.placePath = *result.manifestSidecarPath;
    }
    texts.errorLine = result.manifestError.value_or(QString());
    appendUnder(ExportTexts::succeededTitle(result), shown(result.succeeded), texts.rows);
    appendUnder(ExportTexts::failedTitle(result), shown(result.failed), texts.rows);
    return texts;
}

} // namespace corvane
