#include "review/BulkSelects.h"

#include "platform/TextFormat.h"

namespace corvane {

namespace {

QString nounFor(const ReviewState &state) {
    if (state.subclipsView) {
        return QStringLiteral("subclip");
    }
    return state.selectedOnly ? QStringLiteral("item") : QStringLiteral("clip");
}

} // namespace

void setVisibleSelected(ProjectStore &store, const ReviewState &state, const ReviewListModel &list,
                        bool isSelected) {
    const auto [clips, subclips] = list.bulkTargets();
    int changed = 0;
    if (!clips.isEmpty()) {
        changed += isSelected ? store.selectClips(clips) : store.deselectClips(clips);
    }
    if (!subclips.isEmpty()) {
        changed += isSelected ? store.selectSubclips(subclips) : store.deselectSubclips(subclips);
    }
    const QString noun = nounFor(state);
    const QString done = isSelected ? QStringLiteral("Marked %1 for export")
                                    : QStringLiteral("Cleared %1 from selects");
    const QString unchanged = isSelected ? QStringLiteral("All visible %1s were already selected")
                                         : QStringLiteral("No visible %1s were selected");
    store.setStatus(changed > 0 ? done.arg(counted(changed, noun)) : unchanged.arg(noun));
}

} // namespace corvane
