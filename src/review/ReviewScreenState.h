#pragma once

#include "review/ActionQueue.h"
#include "review/ClipInspector.h"
#include "review/FilterBar.h"
#include "review/ReviewPaneState.h"
#include "review/SelectionEdits.h"

namespace corvane {

/// The review screen without its QML: connects its parts to the project and to each other, and
/// dispatches keys.
///
/// Edits go to the store, playback to the player. The state is not saved; each opened project
/// starts from the defaults, also if it is opened again. Main thread only.
class ReviewScreenState : public QObject {
    Q_OBJECT
    Q_PROPERTY(corvane::FilterBar *filterBar READ filterBar CONSTANT)
    Q_PROPERTY(corvane::ReviewListModel *list READ list CONSTANT)
    Q_PROPERTY(corvane::SubclipListModel *subclips READ subclips CONSTANT)
    Q_PROPERTY(corvane::FilmstripLoader *filmstrip READ filmstrip CONSTANT)
    Q_PROPERTY(corvane::ClipInspector *inspector READ inspector CONSTANT)
    Q_PROPERTY(corvane::ReviewSelection *selection READ selection CONSTANT)
    Q_PROPERTY(corvane::ReviewTransport *transport READ transport CONSTANT)
    Q_PROPERTY(corvane::ReviewMarking *marking READ marking CONSTANT)
    Q_PROPERTY(corvane::ReviewPaneState *panes READ panes CONSTANT)
    Q_PROPERTY(bool hasSelects READ hasSelects NOTIFY hasSelectsChanged)
    Q_PROPERTY(bool showsNoMatches READ showsNoMatches NOTIFY showsNoMatchesChanged)
    /// The subject of an `Alert`; null without a question.
    Q_PROPERTY(QVariant confirmation READ alertSubject NOTIFY confirmationChanged)

  public:
    /// Creators of derived images, and where sizes are kept. A null member disables its kind.
    struct Services {
        FilmstripLoader::Generator filmstrip;
        SubclipThumbnails::Writer subclipThumbnail;
        std::unique_ptr<QSettings> settings;
    };
    /// The creators that read media files.
    static Services mediaServices();

    /// The store and the player must outlive it.
    ReviewScreenState(ProjectStore &store, ReviewPlayer &player, Services services = {},
                      QObject *parent = nullptr);

    FilterBar *filterBar() { return &m_filterBar; }
    ReviewListModel *list() { return &m_list; }
    SubclipListModel *subclips() { return &m_subclips; }
    FilmstripLoader *filmstrip() { return &m_filmstrip; }
    ClipInspector *inspector() { return &m_inspector; }
    ReviewSelection *selection() { return &m_selection; }
    ReviewTransport *transport() { return &m_transport; }
    ReviewMarking *marking() { return &m_marking; }
    ReviewPaneState *panes() { return &m_panes; }

    /// To be called when the screen is shown. Takes the keyboard focus.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();

    /// Handles a key press and returns true if the key has a meaning here. Text input and a pending
    /// confirmation get all keys. A key that repeats because it is held down does nothing.
    bool handleKeyDown(int key, Qt::KeyboardModifiers modifiers, bool textHasFocus,
                       bool isRepeat = false);
    /// The same for keys of the key map only.
    bool handleKeyPress(int key, Qt::KeyboardModifiers modifiers, bool textHasFocus);
    /// Does what `ReviewSelection::moveSelection` does, after the keys before it.
    void moveSelection(int rows, Qt::KeyboardModifiers modifiers);
    /// Asks for confirmation of `SelectionEdits::deletion`.
    void handleDeleteKey();

    /// The question that waits for an answer.
    const std::optional<ReviewConfirmation> &confirmation() const { return m_confirmation; }
    bool hasConfirmation() const { return m_confirmation.has_value(); }
    Q_INVOKABLE void answerConfirmation(bool accept);

    /// True if anything in the project is selected for export.
    bool hasSelects() const { return m_store.hasSelects(); }
    /// True if the project has clips but the list is empty.
    bool showsNoMatches() const;
    /// Selects or deselects all visible rows for export, except inline subclips, and reports the
    /// result in the status line.
    Q_INVOKABLE void setVisibleSelected(bool isSelected);

  Q_SIGNALS:
    void hasSelectsChanged();
    void showsNoMatchesChanged();
    void confirmationChanged();
    /// A project was opened, perhaps the same again, or the project was closed.
    void projectReplaced();
    /// A new project is shown that starts with importing footage.
    void importRequested();

  private:
    QVariant alertSubject() const;

    void updateProject();
    void updateFilter();
    void updateCounts();
    void updateSelection();
    void resetForProject();
    void requestPendingImport();
    void run(const KeyMap::Command &command);

    ProjectStore &m_store;
    FilterBar m_filterBar;
    ReviewListModel m_list;
    SubclipListModel m_subclips;
    FilmstripLoader m_filmstrip;
    ClipInspector m_inspector;
    ReviewSelection m_selection;
    ReviewTransport m_transport;
    ReviewMarking m_marking;
    ReviewPaneState m_panes;
    SelectionEdits m_edits;
    ActionQueue m_actions;

    std::optional<QString> m_projectFile; ///< of the shown project; nullopt if it isn't shown yet
    std::optional<ReviewConfirmation> m_confirmation;
    std::function<void()> m_onAccept;
    bool m_isShown = false;
    bool m_hadSelects = false;      ///< as last published
    bool m_showedNoMatches = false; ///< likewise
};

} // namespace corvane
