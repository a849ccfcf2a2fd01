#pragma once

#include "kit/QmlTypes.h"
#include "shell/CorvaneApp.h"

/// Registers the types of the layer below as QML types. The application creates the instances.
namespace corvane::shellTypes {

CORVANE_QML_TYPE(AppCommand)
CORVANE_QML_TYPE(AppCommands)
CORVANE_QML_TYPE(ContentRouter)
CORVANE_QML_TYPE(CorvaneApp)
CORVANE_QML_TYPE(DialogFilePanels)
CORVANE_QML_TYPE(HelpDocument)
CORVANE_QML_TYPE(ProjectHeader)
CORVANE_QML_TYPE(ProjectSetup)
CORVANE_QML_TYPE(RecentProjectsModel)
CORVANE_QML_TYPE(SessionAlert)
CORVANE_QML_TYPE(UpdaterController)

} // namespace corvane::shellTypes
