#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/ReviewRows.h"

#include <algorithm>

namespace corvane {

namespace {

struct SubclipMarks {
    double inSeconds = 0;
    double outSeconds = 0;
    std::optional<QString> label;
    std::optional<int> rating;
    bool selected = true;
};

SubclipMarks subclipMarksOf(const CommandCall &call) {
    using namespace argumentValues;
    SubclipMarks marks{.inSeconds = seconds(call.argument(2), QStringLiteral("IN")),
                       .outSeconds = seconds(call.argument(3), QStringLiteral("OUT")),
                       .label = call.value("label"),
                       .rating = option(call, "rating", rating),
                       .selected = option(call, "select", onOrOff).value_or(true)};
    if (marks.inSeconds >= marks.outSeconds) {
        throw UsageError(QStringLiteral("IN must be less than OUT, and %1 isn't less than %2.")
                             .arg(call.argument(2), call.argument(3)));
    }
    return marks;
}

/// New subclips are selected, unrated and without a label, so only other values are set.
MixedSidebarRow addSubclip(ProjectStore &store, const QString &videoId, const SubclipMarks &marks) {
    const SubclipKey key{videoId, store.addSubclip(videoId, marks.inSeconds, marks.outSeconds)};
    if (marks.label) {
        store.renameSubclip(key, marks.label);
    }
    if (marks.rating) {
        store.setSubclipRating(key, *marks.rating);
    }
    if (!marks.selected) {
        store.toggleSubclipSelected(key);
    }
    const VideoItem video = store.project()->videos.at(store.project()->indexOfVideo(videoId));
    return {video, *std::ranges::find(video->subclips, key.subclipId, &Subclip::id)};
}

int runSubclip(const CommandCall &call) {
    const SubclipMarks marks = subclipMarksOf(call);
    CliSession session(call);
    const QString videoId = session.resolveClips({call.argument(1)}).first();
    const MixedSidebarRow row = addSubclip(session.store(), videoId, marks);
    session.save();
    call.printResult([&](JSONWriter &writer) { writeReviewRow(writer, row); },
                     [&] { printReviewRows(call, {row}); });
    return kAllDone;
}

} // namespace

CliCommand subclipCommand() {
    return {.name = QStringLiteral("subclip"),
            .synopsis = QStringLiteral("PROJECT CLIP IN OUT"),
            .summary = QStringLiteral("Marks a range of a clip, in seconds, as a subclip."),
            .options = {valueOption("label", "T", "The subclip's label."),
                        valueOption("rating", "N", "0 to 5 stars."),
                        valueOption("select", "on|off", "Selected for export; on unless said.")},
            .run = runSubclip};
}

} // namespace corvane
