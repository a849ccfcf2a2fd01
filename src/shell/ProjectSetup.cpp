#include "shell/ProjectSetup.h"

#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "session/ProjectName.h"

#include <QPointer>

namespace corvane {

ProjectSetup::ProjectSetup(ProjectStore &store, FilePanels &panels, QObject *parent)
    : QObject(parent), m_store(store), m_panels(panels) {
    reset();
}

void ProjectSetup::reset() {
    m_fields = {.shootDate = m_store.clock().now().toLocalTime().date()};
    Q_EMIT changed();
}

QString ProjectSetup::shootDateText() const {
    return m_fields.shootDate.toString(Qt::ISODate);
}

bool ProjectSetup::canCreate() const {
    return !m_isCreating && projectName::isValid(m_fields.projectName);
}

QString ProjectSetup::layoutPreview() const {
    const QString trimmed = m_fields.projectName.trimmed();
    const QString name = trimmed.isEmpty() ? QStringLiteral("MyProject") : trimmed;
    const QString file = projectName::fileName(name);
    if (!m_fields.createProjectFolder) {
        return QStringLiteral("<parent>/%1").arg(file);
    }
    return QStringLiteral("<parent>/%1/\n"
                          "    %2\n"
                          "    .corvane-cache/   (created lazily)\n"
                          "    selects/          (created on first export)")
        .arg(name, file);
}

template <typename Value> void ProjectSetup::setField(Value &field, const Value &value) {
    if (field != value) {
        field = value;
        Q_EMIT changed();
    }
}

void ProjectSetup::setProjectName(const QString &text) {
    setField(m_fields.projectName, text);
}

void ProjectSetup::setIncludeShootDate(bool include) {
    setField(m_fields.includeShootDate, include);
}

void ProjectSetup::setShootDateText(const QString &text) {
    const QDate date = QDate::fromString(text.trimmed(), QStringLiteral("yyyy-MM-dd"));
    if (date.isValid()) {
        m_fields.shootDate = date;
    }
    Q_EMIT changed();
}

void ProjectSetup::setClientOrSeries(const QString &text) {
    setField(m_fields.clientOrSeries, text);
}

void ProjectSetup::setLocation(const QString &text) {
    setField(m_fields.location, text);
}

void ProjectSetup::setNotes(const QString &text) {
    setField(m_fields.notes, text);
}

void ProjectSetup::setCreateProjectFolder(bool create) {
    setField(m_fields.createProjectFolder, create);
}

FilePanels::SavePanel ProjectSetup::savePanel() const {
    const QString name = m_fields.projectName.trimmed();
    if (m_fields.createProjectFolder) {
        return {.message =
                    QStringLiteral("Choose where to create the \"%1\" project folder.").arg(name),
                .nameFieldLabel = QStringLiteral("Folder name:"),
                .proposedName = name};
    }
    return {.message = QStringLiteral("Choose where to save the .corvane file."),
            .proposedName = projectName::fileName(name),
            .choosesProjectFile = true};
}

NewProject ProjectSetup::newProject() const {
    return {.name = m_fields.projectName.trimmed(),
            .shootDate = m_fields.includeShootDate ? shootDateText() : QString(),
            .clientOrSeries = m_fields.clientOrSeries,
            .location = m_fields.location,
            .notes = m_fields.notes};
}

void ProjectSetup::create() {
    if (!canCreate()) {
        return;
    }
    const auto folder =
        m_fields.createProjectFolder ? ProjectFolder::Create : ProjectFolder::MustExist;
    m_panels.save(savePanel(),
                  [self = QPointer(this), project = newProject(), folder](const QString &chosen) {
                      if (self && !self->m_isCreating) {
                          detach(self->createAt(project, chosen, folder));
                      }
                  });
}

QCoro::Task<> ProjectSetup::createAt(NewProject project, QString chosen, ProjectFolder folder) {
    const QPointer self(this);
    setField(m_isCreating, true);
    const QString file = folder == ProjectFolder::Create
                             ? paths::joined(chosen, projectName::fileName(project.name))
                             : projectName::withExtension(chosen);
    co_await m_store.createProject(project, file, folder);
    if (self) {
        setField(m_isCreating, false);
    }
}

} // namespace corvane
