#pragma once

#include "review/FilmstripLoader.h"
#include "review/MultiSelection.h"
#include "review/PlayerReadiness.h"
#include "review/ReviewListModel.h"
#include "review/ReviewPlayer.h"

namespace corvane {

/// The selection of the review screen: the clip in the player, its active subclip, and the rows of
/// the multi-selection.
///
/// Selecting a clip loads it into the player; activating a subclip holds playback in its range
/// (subclip mode). A selected clip or subclip that is removed from the project counts as not
/// selected, but is selected again if an undo restores it.
///
/// Main thread only. The objects passed to the constructor must outlive it.
class ReviewSelection : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString selectedVideoId READ selectedVideoIdText NOTIFY selectionChanged)
    Q_PROPERTY(bool hasSelectedVideo READ hasSelectedVideo NOTIFY selectionChanged)
    Q_PROPERTY(bool isAudioOnly READ isAudioOnly NOTIFY selectionChanged)
    Q_PROPERTY(bool isInSubclipMode READ isInSubclipMode NOTIFY selectionChanged)
    Q_PROPERTY(QString activeSubclipName READ activeSubclipName NOTIFY selectionChanged)

  public:
    ReviewSelection(ProjectStore &store, ReviewListModel &list, ReviewPlayer &player,
                    FilmstripLoader &filmstrip);

    const std::optional<QString> &selectedVideoId() const { return m_selectedVideoId; }
    /// nullptr if no clip is selected or it was removed. Valid until the next edit.
    const VideoRecord *selectedVideo() const { return m_list.video(m_selectedVideoId); }
    bool hasSelectedVideo() const { return selectedVideo() != nullptr; }
    bool isAudioOnly() const; ///< of the selected clip
    /// Loads the clip. If it is selected already, only leaves subclip mode.
    void selectClip(const QString &videoId);

    const std::optional<QString> &activeSubclipId() const { return m_activeSubclipId; }
    /// nullptr outside subclip mode. Valid until the next edit.
    const Subclip *activeSubclip() const;
    bool isInSubclipMode() const { return activeSubclip() != nullptr; }
    QString activeSubclipName() const;
    /// Selects the subclip's clip if necessary, then activates the subclip when the player is
    /// ready, at the latest after `PlayerReadiness::kTimeout`. Any later choice of a clip or a
    /// subclip cancels the activation, and so does `exitSubclipMode`.
    Q_INVOKABLE void selectSubclip(const QString &videoId, const QString &subclipId);
    /// Seeks to the subclip's in point and holds playback in its range.
    void activateSubclip(const Subclip &subclip);
    /// Clears the active subclip and the range, and cancels a pending activation.
    Q_INVOKABLE void exitSubclipMode();

    /// Selects the row and clears the multi-selection; with Control toggles its mark, with Shift
    /// marks the range from the anchor.
    Q_INVOKABLE void clickRow(int row, Qt::KeyboardModifiers modifiers);
    /// Clicks the row that is `rows` below the last clicked one (above it if negative), keeping
    /// Shift. If an edit removed that row from the list, counts from its former index; if it is
    /// not listed for another reason, from the end of the list.
    void moveSelection(int rows, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    const MultiSelection &multiSelection() const { return m_marks; }
    void extendSelection(const SidebarRowId &row);
    /// The row at which a range starts.
    std::optional<SidebarRowId> currentAnchor() const;
    void clearMultiSelection();

    // For the screen state.
    /// Deselects everything and unloads the clip. Emits no signal.
    void reset();
    /// To be called after an edit: stops playback of a removed clip and leaves subclip mode if the
    /// subclip was removed. Emits no signal.
    void dropRemoved();
    /// To be called after a change of the filter.
    void forgetClickedIndex() { m_clickedIndex.reset(); }
    /// Emits `selectionChanged` if a property differs from the last call.
    void publish();

  Q_SIGNALS:
    /// A property changed. Emitted by `publish`.
    void selectionChanged();
    /// The selection may have changed.
    void changed();
    /// Another clip was selected; its media is not loaded yet.
    void clipSelected();
    /// A clip or subclip was chosen, which gives the screen the keyboard focus.
    void focusRequested();
    /// The list should scroll to this row, which a key chose.
    void rowChosen(int row);

  private:
    QString selectedVideoIdText() const { return m_selectedVideoId.value_or(QString()); }
    void activateOnceReady(const SubclipKey &key);
    void leaveSubclip();

    ProjectStore &m_store;
    ReviewListModel &m_list;
    ReviewPlayer &m_player;
    FilmstripLoader &m_filmstrip;

    std::optional<QString> m_selectedVideoId;
    std::optional<QString> m_activeSubclipId;
    std::unique_ptr<PlayerReadiness> m_activation; ///< pending or done; at most one
    MultiSelection m_marks;
    std::optional<SidebarRowId> m_clickedRow; ///< clicked last, or chosen by a key
    std::optional<qsizetype> m_clickedIndex;  ///< its index at that time; nullopt if refiltered
    /// The selected clip, whether it exists, and the active subclip's name.
    std::tuple<QString, bool, bool, std::optional<QString>> m_published;
};

} // namespace corvane
