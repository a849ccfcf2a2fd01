#include "delivery/handoff/HandoffSheet.h"

#include "delivery/handoff/HandoffTexts.h"
#include "delivery/Segments.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

constexpr std::array<segments::Segment<HandoffOutputMode>, 2> kHandoffOutputs{{
    {HandoffOutputMode::primaryOnly, "Primary only",
     "Source-quality clips + extracted subclips only."},
    {HandoffOutputMode::primaryAndHd, "Primary + HD",
     "Each output gets a 1080p H.264 sibling under media/HD/. The .corvane marks clips with hdPath "
     "so the sidebar can show an HD badge."},
}};

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
    : DeliverySheet(
          {.nothing =
               QStringLiteral("Nothing to hand off. Mark clips with the S flag in Review (or "
                              "set up subclips), then come back here."),
           .folderPanelMessage = QStringLiteral("Choose the destination folder"),
           .transcodeHelp = QStringLiteral("H.264/AAC re-encode at HighestQuality. Frame-accurate "
                                           "trims; output is .mp4 always."),
           .handlesHelp = QStringLiteral("Extra time before in-point and after out-point of "
                                         "extracted subclips. Useful for room tone or NLE re-trim. "
                                         "Skipped for whole-clip rows.")},
          flow, store, panels, clock, parent),
      m_flow(flow) {
    connect(&flow, &SelectsHandoffViewModel::recentDestinationsChanged, this,
            &HandoffSheet::recentsChanged);
}

DeliveryChoice HandoffSheet::output() const {
    return segments::choice(kHandoffOutputs, m_flow.choices().outputMode);
}

void HandoffSheet::chooseOutput(int index) {
    if (const auto output = segments::valueAt(kHandoffOutputs, index)) {
        m_flow.setOutputMode(*output);
    }
}

QString HandoffSheet::packageLocation() const {
    return HandoffTexts::packageLocation(m_flow.choices());
}

QStringList HandoffSheet::recents() const {
    QStringList lines = m_flow.recentDestinations();
    std::ranges::transform(lines, lines.begin(), inOneLine);
    return lines;
}

QString HandoffSheet::recentsHelp() const {
    return hasRecents() ? QString() : QStringLiteral("There was no handoff yet.");
}

void HandoffSheet::chooseRecent(int index) {
    if (index >= 0 && index < m_flow.recentDestinations().size()) {
        m_flow.setFolder(m_flow.recentDestinations().at(index));
    }
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

QString HandoffSheet::progressDetails() const {
    return HandoffTexts::rowLine(*m_flow.progress());
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
