#pragma once

#include "session/ProjectPresence.h"

namespace corvane {

/// Texts and states of the header above an open project. The constructor's arguments must outlive
/// this object. Main thread only.
class ProjectHeader : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString projectName READ projectName NOTIFY changed)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(QString noticeHelp READ noticeHelp NOTIFY changed)
    Q_PROPERTY(bool hasSelects READ hasSelects NOTIFY changed)
    Q_PROPERTY(QString closeHelp READ closeHelp CONSTANT)
    Q_PROPERTY(QString importHelp READ importHelp CONSTANT)
    Q_PROPERTY(QString exportHelp READ exportHelp NOTIFY changed)
    Q_PROPERTY(QString handoffHelp READ handoffHelp NOTIFY changed)
    Q_PROPERTY(QString guideHelp READ guideHelp CONSTANT)

  public:
    ProjectHeader(ProjectStore &store, ProjectPresence &presence, QObject *parent = nullptr);

    // Empty or false if no project is open.
    const QString &projectName() const { return m_state.projectName; }
    const QString &statusMessage() const { return m_state.statusMessage; }
    /// Lasting states of the project's file, such as "Unsaved changes"; may be empty.
    const QString &notice() const { return m_state.notice; }
    /// The same in sentences.
    const QString &noticeHelp() const { return m_state.noticeHelp; }
    bool hasSelects() const { return m_state.hasSelects; }

    static QString closeHelp() { return QStringLiteral("Close project and return to Home"); }
    static QString importHelp() { return QStringLiteral("Import footage (Ctrl+I)"); }
    QString exportHelp() const;
    QString handoffHelp() const;
    static QString guideHelp() { return QStringLiteral("Open Corvane User Guide (F1)"); }

  Q_SIGNALS:
    void changed();

  private:
    struct State {
        QString projectName;
        QString statusMessage;
        QString notice;
        QString noticeHelp;
        bool hasSelects = false;

        bool operator==(const State &) const = default;
    };

    void updateState();

    void addNotices(State &state) const;

    ProjectStore &m_store;
    ProjectPresence &m_presence;
    State m_state;
};

} // namespace corvane
