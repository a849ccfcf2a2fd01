#pragma once

#include "review/ReviewSelection.h"

#include <QSettings>

namespace corvane {

/// The parts of the review screen that open and close, their sizes, and where its keyboard focus
/// is. Main thread only. The selection must outlive it.
class ReviewPaneState : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool showsInspector READ showsInspector NOTIFY panesChanged)
    Q_PROPERTY(QString inspectorGlyph READ inspectorGlyph NOTIFY panesChanged)
    Q_PROPERTY(QString inspectorHelp READ inspectorHelp NOTIFY panesChanged)
    Q_PROPERTY(bool subclipDrawerOpen READ subclipDrawerOpen NOTIFY panesChanged)
    Q_PROPERTY(QString subclipDrawerGlyph READ subclipDrawerGlyph NOTIFY panesChanged)
    Q_PROPERTY(bool showsSubclipBars READ showsSubclipBars NOTIFY panesChanged)
    Q_PROPERTY(QString subclipCountText READ subclipCountText NOTIFY panesChanged)
    Q_PROPERTY(
        int sidePaneWidth READ sidePaneWidth WRITE setSidePaneWidth NOTIFY sidePaneWidthChanged)
    Q_PROPERTY(bool keyboardFocused READ keyboardFocused WRITE setKeyboardFocused NOTIFY
                   keyboardFocusedChanged)

  public:
    /// Keeps sizes in `settings`; null for a state that forgets them.
    explicit ReviewPaneState(const ReviewSelection &selection,
                             std::unique_ptr<QSettings> settings = {});

    bool inspectorPanelOpen() const { return m_inspectorPanelOpen; }
    /// True if the inspector is open and a clip is selected. It is shown instead of the list.
    bool showsInspector() const { return m_inspectorPanelOpen && m_selection.hasSelectedVideo(); }
    QString inspectorGlyph() const;
    QString inspectorHelp() const;
    /// A no-op without a selected clip.
    Q_INVOKABLE void toggleInspector();

    bool subclipDrawerOpen() const { return m_subclipDrawerOpen; }
    QString subclipDrawerGlyph() const;
    Q_INVOKABLE void toggleSubclipDrawer();

    bool showsSubclipBars() const;
    QString subclipCountText() const; ///< of the selected clip, in parentheses

    /// The width that the user has chosen, in points; 0 before the first choice.
    int sidePaneWidth() const { return m_sidePaneWidth; }
    void setSidePaneWidth(int width);

    /// True if keys go to the screen and to none of its controls.
    bool keyboardFocused() const { return m_keyboardFocused; }
    void setKeyboardFocused(bool focused);

    void close(); ///< the inspector and the drawer
    /// Emits `panesChanged` if a property differs from the last call.
    void publish();

  Q_SIGNALS:
    void panesChanged();
    void sidePaneWidthChanged();
    void keyboardFocusedChanged();

  private:
    const ReviewSelection &m_selection;
    std::unique_ptr<QSettings> m_settings;
    int m_sidePaneWidth = 0;
    /// The selection, the open parts, the subclip bars and the count.
    std::tuple<bool, bool, bool, bool, QString> m_published;
    bool m_inspectorPanelOpen = false;
    bool m_subclipDrawerOpen = false;
    bool m_keyboardFocused = false;
};

} // namespace corvane
