#pragma once

#include "review/KeyMap.h"
#include "review/ReviewConfirmation.h"
#include "review/ReviewMarking.h"

namespace corvane {

/// Edits what is selected: the marked rows if there are any, otherwise the active subclip,
/// otherwise the selected clip. An edit of several rows is one undo step.
///
/// Main thread only. The objects passed to the constructor must outlive it.
class SelectionEdits {
  public:
    /// A question and the action that runs if the user accepts.
    struct Question {
        ReviewConfirmation confirmation;
        std::function<void()> onAccept;
    };

    SelectionEdits(ProjectStore &store, const ReviewListModel &list, ReviewSelection &selection,
                   ReviewMarking &marking);

    /// Rates or toggles a flag. A command that subclips don't have edits the clip in subclip mode.
    /// Ignores other commands. A clip must be selected.
    void run(const KeyMap::Command &command);
    /// The question before deleting subclips and rejecting clips. Returns nullopt if there is
    /// nothing to delete or reject, and then clears the multi-selection.
    std::optional<Question> deletion();

  private:
    using ClipEdit = std::function<void(const QString &)>;
    using SubclipEdit = std::function<void(const SubclipKey &)>; ///< may be empty

    void edit(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit);
    void editMarked(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit);
    std::optional<Question> deletionOfMarked();
    void deleteMarked(const QStringList &clipsToReject);
    void reject(const QString &videoId);

    ProjectStore &m_store;
    const ReviewListModel &m_list;
    ReviewSelection &m_selection;
    ReviewMarking &m_marking;
};

} // namespace corvane
