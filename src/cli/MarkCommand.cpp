#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/ReviewRows.h"

namespace corvane {

namespace {

/// The marks of one call, in the order in which they are applied: rejecting deselects, so selecting
/// follows it, and the reviewed mark follows the marks that set it.
struct Marks {
    std::optional<int> rating;
    std::optional<bool> favorite;
    std::optional<bool> rejected;
    std::optional<bool> selected;
    std::optional<bool> reviewed;
    std::optional<QString> notes;
    QStringList tagsToRemove;
    QStringList tagsToAdd;

    bool operator==(const Marks &) const = default;
};

Marks marksOf(const CommandCall &call) {
    using namespace argumentValues;
    Marks marks{.rating = option(call, "rating", rating),
                .favorite = option(call, "favorite", onOrOff),
                .rejected = option(call, "reject", onOrOff),
                .selected = option(call, "select", onOrOff),
                .reviewed = option(call, "reviewed", onOrOff),
                .notes = call.value("notes"),
                .tagsToRemove = call.values("untag"),
                .tagsToAdd = call.values("tag")};
    if (marks == Marks()) {
        throw UsageError(QStringLiteral("Nothing to mark: give one of the options."));
    }
    return marks;
}

void markClip(ProjectStore &store, const QString &id, const Marks &marks) {
    const auto clip = [&]() -> const VideoRecord & { return *store.video(id); };
    if (marks.rating) {
        store.setRating(id, *marks.rating);
    }
    if (marks.favorite && clip().favorite != *marks.favorite) {
        store.toggleFavorite(id);
    }
    if (marks.rejected && clip().rejected != *marks.rejected) {
        store.toggleRejected(id);
    }
    if (marks.selected && clip().selectedForExport != *marks.selected) {
        store.toggleSelectedForExport(id);
    }
    if (marks.reviewed && clip().reviewed != *marks.reviewed) {
        store.toggleReviewed(id);
    }
    if (marks.notes) {
        store.setNotes(id, *marks.notes);
    }
    for (const QString &tag : marks.tagsToRemove) {
        store.removeTag(id, tag);
    }
    for (const QString &tag : marks.tagsToAdd) {
        store.addTag(id, tag);
    }
}

int runMark(const CommandCall &call) {
    const Marks marks = marksOf(call);
    CliSession session(call);
    const QStringList ids = session.resolveClips(call.arguments().mid(1));
    {
        const ProjectStore::UndoBatch batch(session.store());
        for (const QString &id : ids) {
            markClip(session.store(), id, marks);
        }
    }
    session.save();
    const QSet<QString> marked(ids.cbegin(), ids.cend());
    QList<MixedSidebarRow> rows;
    for (const VideoItem &video : session.project().videos) {
        if (marked.contains(video->id)) {
            rows.append({video, {}});
        }
    }
    call.printResult([&](JSONWriter &writer) { writeReviewRows(writer, rows); },
                     [&] { printReviewRows(call, rows); });
    return kAllDone;
}

} // namespace

CliCommand markCommand() {
    return {.name = QStringLiteral("mark"),
            .synopsis = QStringLiteral("PROJECT CLIP..."),
            .summary = QStringLiteral("Rates, flags, tags and annotates clips."),
            .options = {valueOption("rating", "N", "0 to 5 stars."),
                        valueOption("favorite", "on|off", "The favorite flag."),
                        valueOption("select", "on|off", "Selected for export."),
                        valueOption("reject", "on|off", "Rejected, which takes a selection back."),
                        valueOption("reviewed", "on|off", "The reviewed mark."),
                        valueOption("notes", "T", "The notes; an empty text removes them."),
                        valueOption("tag", "T", "Add a tag. May be given more than once."),
                        valueOption("untag", "T", "Remove a tag. May be given more than once.")},
            .run = runMark};
}

} // namespace corvane
