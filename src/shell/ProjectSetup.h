#pragma once

#include "platform/FilePanels.h"
#include "session/ProjectStore.h"

#include <QDate>

namespace corvane {

/// The fields of a new project, and its creation. The constructor's arguments must outlive this
/// object. Main thread only.
class ProjectSetup : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString projectName READ projectName WRITE setProjectName NOTIFY changed)
    Q_PROPERTY(bool includeShootDate READ includeShootDate WRITE setIncludeShootDate NOTIFY changed)
    Q_PROPERTY(QString shootDate READ shootDateText WRITE setShootDateText NOTIFY changed)
    Q_PROPERTY(QString clientOrSeries READ clientOrSeries WRITE setClientOrSeries NOTIFY changed)
    Q_PROPERTY(QString location READ location WRITE setLocation NOTIFY changed)
    Q_PROPERTY(QString notes READ notes WRITE setNotes NOTIFY changed)
    Q_PROPERTY(bool createProjectFolder READ createProjectFolder WRITE setCreateProjectFolder NOTIFY
                   changed)
    Q_PROPERTY(bool canCreate READ canCreate NOTIFY changed)
    Q_PROPERTY(QString layoutPreview READ layoutPreview NOTIFY changed)

  public:
    ProjectSetup(ProjectStore &store, FilePanels &panels, QObject *parent = nullptr);

    const QString &projectName() const { return m_fields.projectName; }
    bool includeShootDate() const { return m_fields.includeShootDate; }
    const QDate &shootDate() const { return m_fields.shootDate; }
    /// Such as "2026-03-01".
    QString shootDateText() const;
    const QString &clientOrSeries() const { return m_fields.clientOrSeries; }
    const QString &location() const { return m_fields.location; }
    const QString &notes() const { return m_fields.notes; }
    bool createProjectFolder() const { return m_fields.createProjectFolder; }
    bool isCreating() const { return m_isCreating; }
    /// True if the name is valid and no project is being created.
    bool canCreate() const;
    /// The files and folders that will be created, one per line.
    QString layoutPreview() const;

    void setProjectName(const QString &text);
    void setIncludeShootDate(bool include);
    /// Ignores text that is not a valid date of that form, but emits `changed`, so that the field
    /// shows the previous date again.
    void setShootDateText(const QString &text);
    void setClientOrSeries(const QString &text);
    void setLocation(const QString &text);
    void setNotes(const QString &text);
    void setCreateProjectFolder(bool create);

    /// Asks for the location, then creates the project. No-op if the panel is cancelled. A failure
    /// becomes the store's last error, and the fields stay.
    Q_INVOKABLE void create();
    /// Resets all fields to their initial values.
    void reset();

  Q_SIGNALS:
    void changed();

  private:
    struct Fields {
        QString projectName;
        bool includeShootDate = false;
        QDate shootDate;
        QString clientOrSeries;
        QString location;
        QString notes;
        bool createProjectFolder = true;
    };

    template <typename Value> void setField(Value &field, const Value &value);
    FilePanels::SavePanel savePanel() const;
    NewProject newProject() const;
    QCoro::Task<> createAt(NewProject project, QString chosen, ProjectFolder folder);

    ProjectStore &m_store;
    FilePanels &m_panels;
    Fields m_fields;
    bool m_isCreating = false;
};

} // namespace corvane
