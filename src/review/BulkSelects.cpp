#include "review/BulkSelects.h"

#include "platform/TextFormat.h"

namespace corvane::BulkSelects {

namespace {

QString nounFor(const ReviewState &state) {
    if (state.subclipsView) {
        return QStringLiteral("subclip");
    }
    return state.selectedOnly ? QStringLiteral("item") : QStringLiteral("clip");
}

} // namespace

void addVisible(ProjectStore &store, const ReviewState &state, const ReviewListModel &list) {
    const ReviewTargets targets = list.bulkTargets();
    int changed = targets.clips.isEmpty() ? 0 : store.selectClips(targets.clips);
    changed += targets.subclips.isEmpty() ? 0 : store.selectSubclips(targets.subclips);
    const QString noun = nounFor(state);
    store.setStatus(changed > 0
                        ? QStringLiteral("Marked %1 for export").arg(counted(changed, noun))
                        : QStringLiteral("All visible %1s were already selected").arg(noun));
}

void removeVisible(ProjectStore &store, const ReviewState &state, const ReviewListModel &list) {
    const ReviewTargets targets = list.bulkTargets();
    int changed = targets.clips.isEmpty() ? 0 : store.deselectClips(targets.clips);
    changed += targets.subclips.isEmpty() ? 0 : store.deselectSubclips(targets.subclips);
    const QString noun = nounFor(state);
    store.setStatus(changed > 0
                        ? QStringLiteral("Cleared %1 from selects").arg(counted(changed, noun))
                        : QStringLiteral("No visible %1s were selected").arg(noun));
}

} // namespace corvane::BulkSelects
