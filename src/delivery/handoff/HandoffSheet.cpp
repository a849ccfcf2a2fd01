#include "delivery/handoff/HandoffSheet.h"

#include "delivery/ChoicePlaces.h"
#include "delivery/ExportTexts.h"
#include "delivery/handoff/HandoffTexts.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

constexpr std::array kHandoffOutputs{HandoffOutputMode::primaryOnly,
                                     HandoffOutputMode::primaryAndHd};

QList<DeliveryResult> shown(const QList<HandoffRowOutcome> &outcomes) {
    QList<DeliveryResult> results;
    results.reserve(outcomes.size());
    for (const HandoffRowOutcome &outcome : outcomes) {
        results.append({.outcome = DeliveryResult::Outcome::succeeded,
                        .symbol = ExportTexts::succeededSymbol(),
                        .name = paths::lastComponent(outcome.destinationPath),
                        .note = HandoffTexts::note(outcome),
                        .path = outcome.destinationPath});
    }
    return results;
}

QList<DeliveryResult> shown(const QList<HandoffRowFailure> &failures) {
    QList<DeliveryResult> results;
    results.reserve(failures.size());
    for (const HandoffRowFailure &failure : failures) {
        results.append({.outcome = failure.cancelled ? DeliveryResult::Outcome::cancelled
                                                     : DeliveryResult::Outcome::failed,
                        .symbol = ExportTexts::failedSymbol(failure.cancelled),
                        .name = failure.videoFileName,
                        .error = failure.error});
    }
    return results;
}

} // namespace

HandoffSheet::HandoffSheet(SelectsHandoffViewModel &flow, ProjectStore &store, FilePanels &panels,
                           Clock &clock, QObject *parent)
    : DeliverySheet(store, panels, clock, namingOf(flow), parent), m_flow(flow) {
    using Flow = SelectsHandoffViewModel;
    connect(&flow, &Flow::choicesChanged, this, &HandoffSheet::noteChoices);
    connect(&flow, &Flow::recentDestinationsChanged, this, &HandoffSheet::recentsChanged);
    connect(&flow, &Flow::progressChanged, this, &HandoffSheet::noteRun);
    connect(&flow, &Flow::cancelStageChanged, this, &HandoffSheet::noteRun);
    connect(&flow, &Flow::stageChanged, this, &HandoffSheet::noteStage);
}

NamingFields::Choices HandoffSheet::namingOf(SelectsHandoffViewModel &flow) {
    return {.preset = [&flow] { return flow.choices().namingPreset; },
            .setPreset = [&flow](NamingPreset preset) { flow.setNamingPreset(preset); },
            .naming = [&flow]() -> const ExportNamingOptions & { return flow.choices().naming; },
            .setNaming = [&flow](const ExportNamingOptions &to) { flow.setNaming(to); }};
}

DeliverySheet::Stage HandoffSheet::stage() const {
    switch (m_flow.stage()) {
    case SelectsHandoffViewModel::Stage::configure:
        return Stage::Configure;
    case SelectsHandoffViewModel::Stage::running:
        return Stage::Running;
    case SelectsHandoffViewModel::Stage::done:
        break;
    }
    return Stage::Done;
}

QStringList HandoffSheet::outputs() const {
    return choicePlaces::labels(kHandoffOutputs,
                                [](auto mode) { return HandoffTexts::label(mode); });
}

QString HandoffSheet::handlesHelp() const {
    return HandoffTexts::handlesHelp();
}

QString HandoffSheet::nothingText() const {
    return HandoffTexts::nothingToHandOff();
}

void HandoffSheet::chooseMode(int place) {
    if (const auto mode = modeAt(place)) {
        m_flow.setMode(*mode);
    }
}

void HandoffSheet::chooseOutput(int place) {
    if (const auto output = choicePlaces::at(kHandoffOutputs, place)) {
        m_flow.setOutputMode(*output);
    }
}

void HandoffSheet::chooseHandle(int place) {
    if (const auto seconds = handleAt(place)) {
        m_flow.setSubclipHandleSeconds(*seconds);
    }
}

QString HandoffSheet::packageLocation() const {
    return HandoffTexts::packageLocation(m_flow.choices());
}

QString HandoffSheet::projectNamePlaceholder() {
    return HandoffTexts::projectNamePlaceholder();
}

QString HandoffSheet::projectNameHelp() {
    return HandoffTexts::projectNameHelp();
}

QStringList HandoffSheet::recents() const {
    return choicePlaces::labels(m_flow.recentDestinations(), inOneLine);
}

QString HandoffSheet::recentsHelp() const {
    return hasRecents() ? QString() : QStringLiteral("There was no handoff yet.");
}

void HandoffSheet::chooseRecent(int place) {
    if (const auto folder = choicePlaces::at(m_flow.recentDestinations(), place)) {
        m_flow.setDestinationFolder(folder);
    }
}

void HandoffSheet::resetFlow(const Project &project) {
    m_flow.reset(project);
}

void HandoffSheet::startFlow(const Project &project) {
    detach(m_flow.start(project));
}

void HandoffSheet::cancelFlow() {
    m_flow.requestCancel();
}

std::optional<QString> HandoffSheet::chosenFolder() const {
    return m_flow.choices().destinationFolder;
}

void HandoffSheet::setChosenFolder(const QString &folder) {
    m_flow.setDestinationFolder(folder);
}

QString HandoffSheet::folderPanelMessage() const {
    return QStringLiteral("Choose the destination folder");
}

DeliverySheet::ChoiceTexts HandoffSheet::choiceTexts() const {
    const HandoffChoices &choices = m_flow.choices();
    return {.folder = HandoffTexts::destination(choices),
            .mode = placeOf(choices.mode),
            .modeHelp = HandoffTexts::help(choices.mode),
            .output = choicePlaces::placeOf(kHandoffOutputs, choices.outputMode),
            .outputHelp = HandoffTexts::help(choices.outputMode),
            .handle = placeOfHandle(choices.subclipHandleSeconds)};
}

QList<DeliveryRow> HandoffSheet::plan(const Project &project) {
    const QList<HandoffClip> clips = planClips(project);
    m_summary = HandoffTexts::contentsSummary(clips);
    QList<DeliveryRow> rows;
    rows.reserve(clips.size());
    for (const HandoffClip &clip : clips) {
        rows.append({.id = clip.video->id,
                     .symbol = HandoffTexts::symbol(clip),
                     .name = inOneLine(clip.video->fileName),
                     .note = HandoffTexts::contents(clip)});
    }
    return rows;
}

QString HandoffSheet::obstacle() const {
    const HandoffChoices &choices = m_flow.choices();
    if (!choices.destinationFolder) {
        return QStringLiteral("Choose a destination folder first.");
    }
    if (choices.projectName.trimmed().isEmpty()) {
        return QStringLiteral("Give the project a name first.");
    }
    return hasRows() ? QString() : QStringLiteral("There is nothing to hand off.");
}

DeliverySheet::RunTexts HandoffSheet::runTexts() const {
    RunTexts texts{.fraction = m_flow.overallFraction(),
                   .cancelText = ExportTexts::cancelButton(m_flow.cancelStage()),
                   .canCancel = m_flow.cancelStage() != CancelStage::hard};
    if (const auto &progress = m_flow.progress()) {
        texts.line = HandoffTexts::progressLine(*progress);
        texts.percent = ExportTexts::percent(texts.fraction);
        texts.details = HandoffTexts::rowLine(*progress);
        texts.timeLeft = remainingTime(texts.fraction);
    } else {
        texts.line = ExportTexts::checkingLine();
    }
    return texts;
}

DeliverySheet::ResultTexts HandoffSheet::resultTexts() const {
    const HandoffResult &result = *m_flow.result();
    ResultTexts texts{.headline = HandoffTexts::headline(result),
                      .place = inOneLine(result.packageFolder.value_or(QString())),
                      .placePath = result.packageFolder.value_or(QString()),
                      .errorLine = result.generalError.value_or(QString()),
                      .backupLine = HandoffTexts::backupLine(m_flow.backupError()),
                      .succeeded = int(result.succeeded.size()),
                      .failed = result.failedCount(),
                      .cancelled = result.cancelledCount,
                      .folder = chosenFolder().value_or(QString())};
    appendUnder(HandoffTexts::succeededTitle(result), shown(result.succeeded), texts.rows);
    appendUnder(HandoffTexts::failedTitle(result), shown(result.failed), texts.rows);
    return texts;
}

} // namespace corvane
