#pragma once

#include "delivery/export/ExportSheet.h"
#include "delivery/handoff/HandoffSheet.h"
#include "import/ImportSheet.h"
#include "review/MediaBanners.h"
#include "review/PlayerEngine.h"
#include "review/ReviewScreenState.h"
#include "shell/CorvaneApp.h"
#include "shell/FileReveal.h"
#include "shell/SleepInhibitor.h"

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// The state of the screen of an open project: the player, the review, the banners, and the flows
/// for import, export and handoff.
///
/// Each flow has a sheet, and at most one sheet is open: while one is, requests for another are
/// ignored. Opening a sheet pauses the player. One screen serves all projects in turn. Main thread
/// only. The application must outlive it.
class ProjectScreen : public OpenProjectScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with the application")
    Q_PROPERTY(corvane::PlayerEngine *engine READ engine CONSTANT)
    Q_PROPERTY(corvane::ReviewScreenState *review READ review CONSTANT)
    Q_PROPERTY(corvane::MediaBanners *banners READ banners CONSTANT)
    Q_PROPERTY(corvane::ImportSheet *importing READ importing CONSTANT)
    Q_PROPERTY(corvane::ExportSheet *exporting READ exporting CONSTANT)
    Q_PROPERTY(corvane::HandoffSheet *handoff READ handoff CONSTANT)

  public:
    /// `player` configures playback; tests play without audio.
    explicit ProjectScreen(CorvaneApp &app,
                           media::MediaPlayer::Options player = PlayerEngine::optionsWithAudio());
    ~ProjectScreen() override;

    PlayerEngine *engine() { return &m_engine; }
    ReviewScreenState *review() { return &m_review; }
    MediaBanners *banners() { return &m_banners; }
    ImportSheet *importing() { return &m_importing; }
    ExportSheet *exporting() { return &m_exporting; }
    HandoffSheet *handoff() { return &m_handoff; }

    bool isRunning() const override { return m_isRunning; }
    void cancelRuns() override;

    // Open a sheet. Export and handoff need something that is selected for export.
    void requestImport();
    void requestExport();
    void requestHandoff();

    /// Handles a key that no control has accepted. Returns true if it has a meaning.
    Q_INVOKABLE bool handleKey(int key, int modifiers, bool isRepeat);
    /// True if the focused control accepts text input.
    static bool isTextInputFocused();

    /// True if local files or folders are dragged and the import can be opened.
    Q_INVOKABLE bool canImportDropped(const QList<QUrl> &urls) const;
    Q_INVOKABLE void importDropped(const QList<QUrl> &urls);

  private:
    void connectRequests(AppRequests &requests);
    void connectFlows();
    bool isSheetOpen() const {
        return m_importing.isOpen() || m_exporting.isOpen() || m_handoff.isOpen();
    }
    template <class Sheet> void open(Sheet &sheet);
    void leaveImport();
    /// Opens the import that a new project starts with. Waits until the sheet of a delivery is
    /// closed.
    void startWithImport();
    void openPendingImport();
    void updateRunning();
    bool moveInList(int key, Qt::KeyboardModifiers modifiers);

    PlayerEngine m_engine;
    ReviewScreenState m_review;
    MediaBanners m_banners;

    ImportViewModel m_importFlow;
    ImportSheet m_importing;
    ExportViewModel m_exportFlow;
    ExportSheet m_exporting;
    SelectsHandoffViewModel m_handoffFlow;
    HandoffSheet m_handoff;

    FileReveal m_reveal;
    bool m_isImportPending = false; ///< waits for the open sheet of a delivery
    bool m_isRunning = false;
    std::optional<SleepInhibitor> m_sleepInhibitor; ///< while a flow runs
};

} // namespace corvane
