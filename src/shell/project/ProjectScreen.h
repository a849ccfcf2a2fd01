#pragma once

#include "delivery/export/ExportSheet.h"
#include "delivery/handoff/HandoffSheet.h"
#include "delivery/handoff/MediaCacheMaker.h"
#include "import/ImportSheet.h"
#include "review/EngineReviewPlayer.h"
#include "review/MediaBanners.h"
#include "review/ReviewScreenState.h"
#include "shell/CorvaneApp.h"
#include "shell/FileReveal.h"
#include "shell/SleepInhibitor.h"

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// All that the screen of an open project is bound to: the player, the decisions of the review, the
/// banners, and the three flows with their sheets, of which one is up at a time. It serves one
/// project after another. What is handed in must outlive it. Main thread.
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
    /// `player` is what plays: without sound where there must be none.
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

    /// A key that nothing on the screen has taken. True if it meant something.
    Q_INVOKABLE bool handleKey(int key, int modifiers, bool isRepeat);
    /// Whether what has the keyboard's focus takes text.
    static bool isTextInputFocused();

    /// Whether footage is what is held over the window, and an import of it could be opened.
    Q_INVOKABLE bool canImportDropped(const QList<QUrl> &urls) const;
    Q_INVOKABLE void importDropped(const QList<QUrl> &urls);

  private:
    void followRequests(AppRequests &requests);
    void followFlows();
    void showSheet();
    void leaveImport();
    void hideSheet();
    void updateRunning();
    bool moveInList(int key, Qt::KeyboardModifiers modifiers);

    PlayerEngine m_engine;
    EngineReviewPlayer m_player;
    ReviewScreenState m_review;
    MediaBanners m_banners;

    ImportViewModel m_importFlow;
    ImportSheet m_importing;
    ExportViewModel m_exportFlow;
    ExportSheet m_exporting;
    MediaCacheMaker m_cacheMaker;
    SelectsHandoffViewModel m_handoffFlow;
    HandoffSheet m_handoff;

    FileReveal m_reveal;
    bool m_isRunning = false;
    std::optional<SleepInhibitor> m_awake; ///< while something runs
};

} // namespace corvane
