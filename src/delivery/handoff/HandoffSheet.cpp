#include "delivery/handoff/HandoffSheet.h"

#include "delivery/DeliveryTexts.h"
#include "delivery/handoff/HandoffTexts.h"
#include "delivery/Segments.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

constexpr std::array kHandoffOutputs{HandoffOutputMode::primaryOnly,
                                     HandoffOutputMode::primaryAndHd};

struct ShowHandoffRow {
    DeliveryResult operator()(const HandoffRowOutcome &outcome) const {
        return {.outcome = DeliveryResult::Outcome::succeeded,
                .name = paths::lastComponent(outcome.destinationPath),
                .note = outcome.hdPath ? QStringLiteral("(+ HD)") : QString(),
                .path = outcome.destinationPath};
    }
    DeliveryResult operator()(const HandoffRowFailure &failure) const {
        return {.outcome = failure.cancelled ? DeliveryResult::Outcome::cancelled
                                             : DeliveryResult::Outcome::failed,
                .name = failure.videoFileName,
                .error = failure.error};
    }
};

} // namespace

HandoffSheet::HandoffSheet(SelectsHandoffViewModel &flow, ProjectStore &store, FilePanels &panels,
                           Clock &clock, QObject *parent)
    : DeliverySheet(flow, store, panels, clock, parent), m_flow(flow) {
    connect(&flow, &SelectsHandoffViewModel::recentDestinationsChanged, this,
            &HandoffSheet::recentsChanged);
}

QString HandoffSheet::modeHelp() const {
    return HandoffTexts::help(m_flow.choices().mode);
}

DeliveryChoice HandoffSheet::output() const {
    const auto output = m_flow.choices().outputMode;
    return {segments::labels(kHandoffOutputs, HandoffTexts::label),
            segments::indexOf(kHandoffOutputs, output), HandoffTexts::help(output)};
}

void HandoffSheet::chooseOutput(int index) {
    if (const auto output = segments::valueAt(kHandoffOutputs, index)) {
        m_flow.setOutputMode(*output);
    }
}

QString HandoffSheet::handlesHelp() const {
    return HandoffTexts::handlesHelp();
}

QString HandoffSheet::nothingText() const {
    return HandoffTexts::nothingToHandOff();
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
    return segments::labels(m_flow.recentDestinations(), inOneLine);
}

QString HandoffSheet::recentsHelp() const {
    return hasRecents() ? QString() : QStringLiteral("There was no handoff yet.");
}

void HandoffSheet::chooseRecent(int index) {
    if (const auto folder = segments::valueAt(m_flow.recentDestinations(), index)) {
        m_flow.setDestinationFolder(folder);
    }
}

QString HandoffSheet::folderPanelMessage() const {
    return QStringLiteral("Choose the destination folder");
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

std::optional<DeliverySheet::ProgressTexts> HandoffSheet::progressTexts() const {
    const auto &progress = m_flow.progress();
    if (!progress) {
        return std::nullopt;
    }
    return ProgressTexts{.line = DeliveryTexts::progressLine(progress->index, progress->total,
                                                             progress->currentFilename),
                         .details = HandoffTexts::rowLine(*progress)};
}

DeliveryResultTexts HandoffSheet::resultTexts() const {
    const HandoffResult &result = *m_flow.result();
    DeliveryResultTexts texts = countsAndRows(result, ShowHandoffRow());
    texts.headline = HandoffTexts::headline(result);
    texts.path = result.packageFolder.value_or(QString());
    texts.line = inOneLine(texts.path);
    texts.errorLine = result.generalError.value_or(QString());
    texts.folder = m_flow.choices().destinationFolder.value_or(QString());
    return texts;
}

} // namespace corvane
