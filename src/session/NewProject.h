#pragma once

#include "document/Project.h"

namespace corvane {

/// The fields from which a project is created. Empty ones are left out of the document.
struct NewProject {
    QString name;
    QString shootDate;
    QString clientOrSeries;
    QString location;
    QString notes;
};

/// Whether creating a project also creates the folder of its file.
enum class ProjectFolder { MustExist, Create };

/// Returns a project without clips, created at `now` and stored in `file`.
Project makeProject(const NewProject &fields, const QString &file, const QDateTime &now);

} // namespace corvane
