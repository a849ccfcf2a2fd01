#pragma once

#include "platform/FilePanels.h"
#include "session/ProjectPresence.h"
#include "session/SessionTexts.h"
#include "shell/AppRequests.h"

#include <QVariant>

namespace corvane {

/// The questions about the open project's file, one at a time: what to do about a failed save or a
/// file that another program changed, whether to close or quit without saving, and whether to edit
/// a project that is open elsewhere. Also handles the requests to save a copy and to close without
/// saving. The constructor's arguments must outlive this object. Main thread only.
class SessionAlert : public QObject {
    Q_OBJECT
    /// The subject of an `Alert`; null without a question.
    Q_PROPERTY(QVariant subject READ subject NOTIFY changed)

  public:
    using Answer = SessionTexts::Question::Answer;

    SessionAlert(ProjectStore &store, ProjectPresence &presence, AppRequests &requests,
                 FilePanels &panels, QObject *parent = nullptr);

    QVariant subject() const;

    /// Returns true if the program may quit. Otherwise a save has failed and the user is asked;
    /// `quitConfirmed` follows if the answer is yes.
    bool confirmQuit();

    // Each answers the question and closes it.
    Q_INVOKABLE void accept();
    Q_INVOKABLE void cancel();
    /// `answer` is the "answer" of one of the subject's choices.
    Q_INVOKABLE void choose(int answer);

  Q_SIGNALS:
    void changed();
    void quitConfirmed();

  private:
    enum class Kind { None, SaveFailed, CloseWithoutSaving, QuitWithoutSaving, OpenElsewhere };

    void updateFailure();
    void updateHolder();
    void show(Kind kind);
    /// Closes the question and returns which one it was.
    Kind close();
    void askForCopy();
    QCoro::Task<> saveCopy(QString file, bool isConflict);

    ProjectStore &m_store;
    ProjectPresence &m_presence;
    FilePanels &m_panels;
    Kind m_kind = Kind::None;
    bool m_hasAskedAboutHolder = false; ///< for the open project
};

} // namespace corvane
