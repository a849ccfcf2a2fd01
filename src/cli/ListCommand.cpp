#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/JSONMembers.h"
#include "cli/ReviewRows.h"
#include "review/list/ClipOrder.h"
#include "review/list/ReviewListing.h"

namespace corvane {

namespace {

ReviewState::RatingFilter ratingFilter(const QString &text, const QString &name) {
    if (text == QStringLiteral("5only")) {
        return ReviewState::RatingFilter::fiveOnly();
    }
    return ReviewState::RatingFilter::threshold(argumentValues::rating(text, name));
}

ReviewState reviewStateOf(const CommandCall &call) {
    ReviewState state;
    state.unreviewedOnly = call.isSet("unreviewed");
    state.favoritesOnly = call.isSet("favorites");
    state.selectedOnly = call.isSet("selected");
    state.subclipsView = call.isSet("subclips");
    state.includeRejects = call.isSet("rejects");
    state.searchQuery = call.value("search").value_or(QString());
    using namespace argumentValues;
    state.ratingFilter = option(call, "rating", ratingFilter).value_or(state.ratingFilter);
    state.sort = option(call, "sort", choice<ReviewState::Sort>).value_or(state.sort);
    return state;
}

int runList(const CommandCall &call) {
    const ReviewState state = reviewStateOf(call);
    CliSession session(call);
    ReviewIndex index;
    index.update(session.project().videos);
    ClipOrder order;
    const std::vector<int> &clips = order.order(state, index);
    const ReviewListing listing(state, index);
    const QList<MixedSidebarRow> rows = listing.shownRows(clips);
    const qsizetype total = listing.totalCount();
    const QString label = state.countLabel(rows.size(), total);
    call.printResult(
        [&](JSONWriter &writer) {
            writeMember(writer, "visible", rows.size());
            writeMember(writer, "total", total);
            writeMember(writer, "label", label);
            writeReviewRows(writer, rows);
        },
        [&] {
            printReviewRows(call, rows);
            call.printLine(label);
        });
    return kAllDone;
}

} // namespace

CliCommand listCommand() {
    return {.name = QStringLiteral("list"),
            .synopsis = QStringLiteral("PROJECT"),
            .summary = QStringLiteral("Lists clips and subclips, filtered and sorted."),
            .options = {flagOption("unreviewed", "Only what isn't reviewed."),
                        flagOption("favorites", "Only favorites."),
                        flagOption("selected", "Only what is selected for export: clips and "
                                               "subclips, in project order."),
                        flagOption("subclips", "List subclips instead of clips."),
                        flagOption("rejects", "List rejected clips too."),
                        valueOption("rating", "N|5only", "Only ratings of N and above, or of 5."),
                        valueOption("search", "Q",
                                    "Only what holds the text in its file name, "
                                    "notes, tags or subclip labels."),
                        valueOption("sort", "KEY",
                                    "The clips' order: filename, imported, rating "
                                    "or duration.")},
            .run = runList};
}

} // namespace corvane
