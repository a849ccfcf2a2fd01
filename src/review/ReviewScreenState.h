#pragma once

#include "review/ClipInspector.h"
#include "review/FilmstripLoader.h"
#include "review/FilterBar.h"
#include "review/KeyMap.h"
#include "review/MultiSelection.h"
#include "review/ReviewConfirmation.h"
#include "review/ReviewListModel.h"
#include "review/ReviewPlayer.h"
#include "review/ScrubberGeometry.h"
#include "review/SubclipListModel.h"
#include "review/SubclipThumbnails.h"

#include <memory>

namespace corvane {

/// All that the review screen decides: what is selected and marked, the drafts and the active
/// subclip, which panes and sheets are open, and what each key does. It changes the document
/// through the store and plays through the player; it needs no screen.
///
/// Main thread. Nothing of it is saved: a project that is opened starts from the defaults. A clip
/// or subclip that has gone from the document is as good as not selected.
class ReviewScreenState : public QObject {
    Q_OBJECT
    Q_PROPERTY(corvane::FilterBar *filterBar READ filterBarObject CONSTANT)
    Q_PROPERTY(corvane::ReviewListModel *list READ listObject CONSTANT)
    Q_PROPERTY(corvane::SubclipListModel *subclips READ subclipsObject CONSTANT)
    Q_PROPERTY(corvane::FilmstripLoader *filmstrip READ filmstripObject CONSTANT)
    Q_PROPERTY(corvane::ClipInspector *inspector READ inspectorObject CONSTANT)
    Q_PROPERTY(QString selectedVideoId READ selectedVideoIdText NOTIFY selectionChanged)
    Q_PROPERTY(bool hasSelectedVideo READ hasSelectedVideo NOTIFY selectionChanged)
    Q_PROPERTY(bool isInSubclipMode READ isInSubclipMode NOTIFY selectionChanged)
    Q_PROPERTY(QString activeSubclipName READ activeSubclipName NOTIFY selectionChanged)
    Q_PROPERTY(bool showsSubclipBars READ showsSubclipBars NOTIFY selectionChanged)
    Q_PROPERTY(QString subclipCountText READ subclipCountText NOTIFY selectionChanged)
    Q_PROPERTY(QVariant draftInFraction READ draftInFractionValue NOTIFY draftsChanged)
    Q_PROPERTY(QVariant draftOutFraction READ draftOutFractionValue NOTIFY draftsChanged)
    Q_PROPERTY(double transportTime READ transportTime NOTIFY transportChanged)
    Q_PROPERTY(double clipTime READ clipTime NOTIFY transportChanged)
    Q_PROPERTY(QString transportText READ transportText NOTIFY transportChanged)
    Q_PROPERTY(QString transportTimeText READ transportTimeText NOTIFY transportChanged)
    Q_PROPERTY(QString transportDurationText READ transportDurationText NOTIFY durationsChanged)
    Q_PROPERTY(double transportDuration READ transportDuration NOTIFY durationsChanged)
    Q_PROPERTY(double clipDuration READ clipDuration NOTIFY durationsChanged)
    Q_PROPERTY(bool showsPlayhead READ showsPlayhead NOTIFY durationsChanged)
    Q_PROPERTY(double playedFraction READ playedFraction NOTIFY transportChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY rateChanged)
    Q_PROPERTY(QString playHelp READ playHelp NOTIFY rateChanged)
    Q_PROPERTY(bool overlayButtonIsVisible READ overlayButtonIsVisible NOTIFY rateChanged)
    Q_PROPERTY(bool hoveringPlayer READ hoveringPlayer WRITE setHoveringPlayer NOTIFY rateChanged)
    Q_PROPERTY(bool hasSelects READ hasSelects NOTIFY hasSelectsChanged)
    Q_PROPERTY(bool showsNoMatches READ showsNoMatches NOTIFY showsNoMatchesChanged)
    Q_PROPERTY(bool isImporting READ isImporting NOTIFY sheetsChanged)
    Q_PROPERTY(bool isExporting READ isExporting NOTIFY sheetsChanged)
    Q_PROPERTY(bool isHandingOff READ isHandingOff NOTIFY sheetsChanged)
    Q_PROPERTY(bool inspectorPanelOpen READ inspectorPanelOpen NOTIFY panelsChanged)
    Q_PROPERTY(bool showsInspector READ showsInspector NOTIFY panelsChanged)
    Q_PROPERTY(QString inspectorGlyph READ inspectorGlyph NOTIFY panelsChanged)
    Q_PROPERTY(QString inspectorHelp READ inspectorHelp NOTIFY panelsChanged)
    Q_PROPERTY(bool subclipDrawerOpen READ subclipDrawerOpen NOTIFY panelsChanged)
    Q_PROPERTY(QString subclipDrawerGlyph READ subclipDrawerGlyph NOTIFY panelsChanged)
    Q_PROPERTY(bool keyboardFocused READ keyboardFocused WRITE setKeyboardFocused NOTIFY
                   keyboardFocusedChanged)
    Q_PROPERTY(bool hasConfirmation READ hasConfirmation NOTIFY confirmationChanged)
    Q_PROPERTY(QVariantMap confirmation READ confirmationMap NOTIFY confirmationChanged)

  public:
    /// What makes pictures. Without one of them there are none of that kind.
    struct Services {
        FilmstripLoader::Generator filmstrip;
        SubclipThumbnails::Writer subclipThumbnail;
    };

    /// The store and the player must outlive it.
    ReviewScreenState(ProjectStore &store, ReviewPlayer &player, Services services = {},
                      QObject *parent = nullptr);

    // The parts of the screen. They belong to the state.
    FilterBar &filterBar() { return m_filterBar; }
    ReviewListModel &list() { return m_list; }
    SubclipListModel &subclips() { return m_subclips; }
    FilmstripLoader &filmstrip() { return m_filmstrip; }
    ClipInspector &inspector() { return m_inspector; }

    // The life of the screen.
    /// Takes the key focus, and opens the import flow where it is due.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();

    // Selection.
    const std::optional<QString> &selectedVideoId() const { return m_selectedVideoId; }
    /// Null where no clip is selected or it has gone. Valid until the next edit.
    const VideoRecord *selectedVideo() const { return m_list.video(m_selectedVideoId); }
    bool hasSelectedVideo() const { return selectedVideo() != nullptr; }
    /// Loads the clip; of the clip that is selected already it only leaves subclip mode.
    Q_INVOKABLE void selectClip(const QString &videoId);
    /// Activates the subclip; of another clip, once that clip is ready or a second has gone by.
    Q_INVOKABLE void selectSubclip(const QString &videoId, const QString &subclipId);
    /// Shift marks a range, Command toggles the row's mark, neither selects the row.
    Q_INVOKABLE void clickRow(int row, Qt::KeyboardModifiers modifiers);
    const MultiSelection &multiSelection() const { return m_marks; }
    /// Selects the row so many rows below the one chosen last, or above it for less than 0, as a
    /// click does; with Shift the marks reach there. From where that one stood if an edit took it
    /// off the list, and from the end where it isn't listed for another reason.
    Q_INVOKABLE void moveSelection(int rows, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void extendSelection(const SidebarRowId &row);
    std::optional<SidebarRowId> currentAnchor() const;
    Q_INVOKABLE void clearMultiSelection();

    // Keys.
    /// A key as it goes down: the delete key and Esc over marked rows first, then the key map.
    /// True if it was handled. A held key does nothing again.
    Q_INVOKABLE bool handleKeyDown(int key, Qt::KeyboardModifiers modifiers, bool textHasFocus,
                                   bool isRepeat = false);
    /// The key map alone. While text has the focus, every key is the text's.
    bool handleKeyPress(int key, Qt::KeyboardModifiers modifiers, bool textHasFocus);
    /// Asks about the marked rows, else the active subclip, else the clip.
    void handleDeleteKey();
    /// The question that waits for an answer. Keys do nothing meanwhile.
    const std::optional<ReviewConfirmation> &confirmation() const { return m_confirmation; }
    bool hasConfirmation() const { return m_confirmation.has_value(); }
    Q_INVOKABLE void answerConfirmation(bool accept);

    // Marking.
    const std::optional<double> &draftIn() const { return m_draftIn; }
    const std::optional<double> &draftOut() const { return m_draftOut; }
    const std::optional<QString> &activeSubclipId() const { return m_activeSubclipId; }
    /// Null outside subclip mode. Valid until the next edit.
    const Subclip *activeSubclip() const;
    bool isInSubclipMode() const { return activeSubclip() != nullptr; }
    QString activeSubclipName() const;
    /// Saves the marked range as a subclip, unless it is shorter than a tenth of a second. The
    /// marks stay where nothing was saved.
    void saveDraftSubclip();
    void activateSubclip(const Subclip &subclip);
    /// What Esc does to the active subclip, and nothing else.
    Q_INVOKABLE void exitSubclipMode();
    Q_INVOKABLE void renameSubclip(const QString &subclipId, const QString &text);
    Q_INVOKABLE void rateSubclip(const QString &subclipId, int rating);
    Q_INVOKABLE void toggleSubclipFavorite(const QString &subclipId);
    Q_INVOKABLE void toggleSubclipSelected(const QString &subclipId);
    /// At once, with no question.
    Q_INVOKABLE void deleteSubclip(const QString &subclipId);

    // Transport and scrubbers. Times are seconds; in subclip mode they count from its in.
    double transportTime() const;
    double transportDuration() const;
    double clipTime() const { return m_player.currentSeconds(); }
    double clipDuration() const { return m_player.durationSeconds(); }
    /// The time, and what stands behind it; the two together.
    QString transportTimeText() const;
    QString transportDurationText() const;
    QString transportText() const;
    double playedFraction() const;
    /// Without a length the scrubber is only its track.
    bool showsPlayhead() const { return transportDuration() > 0; }
    std::optional<double> shownDraftIn() const;
    std::optional<double> shownDraftOut() const;
    /// Where the marks stand on the scrubber, from 0 to 1; nothing for one that isn't shown.
    std::optional<double> draftInFraction() const { return scrubberFraction(shownDraftIn()); }
    std::optional<double> draftOutFraction() const { return scrubberFraction(shownDraftOut()); }
    bool isPlaying() const { return m_player.rate() != 0; }
    QString playHelp() const;
    bool overlayButtonIsVisible() const { return !isPlaying() || m_hoveringPlayer; }
    bool hoveringPlayer() const { return m_hoveringPlayer; }
    void setHoveringPlayer(bool hovering);
    bool showsSubclipBars() const;
    QString subclipCountText() const;
    Q_INVOKABLE void togglePlayback();
    Q_INVOKABLE void stepFrames(int frames) { m_player.stepFrames(frames); }
    /// A pointer at `x` on the scrubber, or on the filmstrip, which always spans the whole clip.
    Q_INVOKABLE void scrub(double x, double width);
    Q_INVOKABLE void scrubFilmstrip(double x, double width);

    // Lists and sheets.
    bool hasSelects() const { return m_list.reviewIndex().hasSelects(); }
    bool showsNoMatches() const;
    Q_INVOKABLE void addToSelects();
    Q_INVOKABLE void removeFromSelects();
    bool isImporting() const { return m_sheet == Sheet::import; }
    bool isExporting() const { return m_sheet == Sheet::exporting; }
    bool isHandingOff() const { return m_sheet == Sheet::handoff; }
    /// Each opens its sheet unless one is open; the last two only where there are selects.
    Q_INVOKABLE void requestImport();
    Q_INVOKABLE void requestExport();
    Q_INVOKABLE void requestHandoff();
    Q_INVOKABLE void dismissSheet();
    bool inspectorPanelOpen() const { return m_inspectorPanelOpen; }
    /// In place of the list. Without a selected clip there is nothing to inspect.
    bool showsInspector() const { return m_inspectorPanelOpen && hasSelectedVideo(); }
    QString inspectorGlyph() const;
    QString inspectorHelp() const;
    Q_INVOKABLE void toggleInspector();
    bool subclipDrawerOpen() const { return m_subclipDrawerOpen; }
    QString subclipDrawerGlyph() const;
    Q_INVOKABLE void toggleSubclipDrawer();
    bool keyboardFocused() const { return m_keyboardFocused; }
    void setKeyboardFocused(bool focused);

  Q_SIGNALS:
    void selectionChanged();
    void draftsChanged();
    void transportChanged();
    void durationsChanged();
    void rateChanged();
    void hasSelectsChanged();
    void showsNoMatchesChanged();
    void sheetsChanged();
    void panelsChanged();
    void keyboardFocusedChanged();
    void confirmationChanged();
    /// The keys have chosen a row, which the list should show.
    void rowChosen(int row);

  private:
    enum class Sheet { none, import, exporting, handoff };
    /// What was told last of what follows from several fields, so that only a change is told.
    struct Published {
        QString selectedVideoId;
        bool hasSelectedVideo = false;
        std::optional<QString> activeSubclipName;
        bool showsSubclipBars = false;
        QString subclipCountText;

        bool operator==(const Published &) const = default;
    };
    /// What a key does to one clip, and to one subclip; a subclip has no part in some.
    using ClipEdit = std::function<void(const QString &)>;
    using SubclipEdit = std::function<void(const SubclipKey &)>;

    FilterBar *filterBarObject() { return &m_filterBar; }
    ReviewListModel *listObject() { return &m_list; }
    SubclipListModel *subclipsObject() { return &m_subclips; }
    FilmstripLoader *filmstripObject() { return &m_filmstrip; }
    ClipInspector *inspectorObject() { return &m_inspector; }
    QString selectedVideoIdText() const { return m_selectedVideoId.value_or(QString()); }
    QVariant draftInFractionValue() const;
    QVariant draftOutFractionValue() const;
    std::optional<double> scrubberFraction(std::optional<double> seconds) const;
    QVariantMap confirmationMap() const;

    void takeProject();
    void takeFilter();
    void updateList();
    void dropWhatIsGone();
    void leaveProject();
    void publishSelection();
    void publishChanges();
    void publishTransport();
    void publishDrafts();
    void openSheet(Sheet sheet);
    void openPendingImport();
    QString mediaPath(const VideoRecord &video) const;
    QString projectFolderPath() const;
    const Subclip *subclip(const SubclipKey &key) const;
    std::optional<SubclipKey> ofSelectedClip(const QString &subclipId) const;

    void run(const KeyMap::Command &command);
    void runTransport(const KeyMap::Command &command);
    void runMarking(const KeyMap::Command &command);
    void runEdit(const KeyMap::Command &command);
    void editTarget(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit);
    void editMarked(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit);
    void ask(ReviewConfirmation question, std::function<void()> onAccept);
    void confirmMarked();
    void applyToMarked(const QStringList &clipIds);
    void rejectUnlessRejected(const QString &videoId);

    void setDrafts(std::optional<double> in, std::optional<double> out);
    double nudged(const std::optional<double> &draft) const;
    void jump(const std::optional<double> &draft, double Subclip::*edge);
    void seekInOnceReady(const SubclipKey &key, double in);
    void makeThumbnail(const SubclipKey &key, const Subclip &subclip, const QString &media);
    void setThumbnailPending(const SubclipKey &key, bool isPending);
    void leaveSubclip();
    std::optional<ClipRange> activeRange() const;

    ProjectStore &m_store;
    ReviewPlayer &m_player;
    Services m_services;
    FilterBar m_filterBar;
    ReviewListModel m_list;
    SubclipListModel m_subclips;
    FilmstripLoader m_filmstrip;
    ClipInspector m_inspector;

    std::optional<QString> m_projectFile; ///< whose state this is
    std::optional<QString> m_selectedVideoId;
    std::optional<QString> m_activeSubclipId;
    std::optional<double> m_draftIn;
    std::optional<double> m_draftOut;
    std::optional<SidebarRowId> m_lastRow; ///< clicked, or chosen by keys
    std::optional<qsizetype> m_lastPlace;  ///< where that row stood, unless filtered anew since
    MultiSelection m_marks;
    std::optional<ReviewConfirmation> m_confirmation;
    std::function<void()> m_onAccept;
    Sheet m_sheet = Sheet::none;
    Published m_published;
    std::pair<double, double> m_publishedTimes;     ///< of the transport, of the clip
    std::pair<double, double> m_publishedDurations; ///< of the same
    std::pair<std::optional<double>, std::optional<double>> m_publishedDrafts;
    bool m_isShown = false;
    bool m_hadSelects = false;
    bool m_showedNoMatches = false;
    bool m_hoveringPlayer = false;
    bool m_inspectorPanelOpen = false;
    bool m_subclipDrawerOpen = false;
    bool m_keyboardFocused = false;
};

} // namespace corvane
