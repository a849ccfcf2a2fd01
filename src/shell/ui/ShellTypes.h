#pragma once

#include "shell/CorvaneApp.h"

#include <QtQml/qqml.h>

/// The names under which the screens know the types that they are bound to. None is made by a
/// screen: they come with the application.
namespace corvane::shellTypes {

struct AppCommandType {
    Q_GADGET
    QML_FOREIGN(corvane::AppCommand)
    QML_NAMED_ELEMENT(AppCommand)
    QML_UNCREATABLE("Comes with the application")
};

struct AppCommandsType {
    Q_GADGET
    QML_FOREIGN(corvane::AppCommands)
    QML_NAMED_ELEMENT(AppCommands)
    QML_UNCREATABLE("Comes with the application")
};

struct AppRequestsType {
    Q_GADGET
    QML_FOREIGN(corvane::AppRequests)
    QML_NAMED_ELEMENT(AppRequests)
    QML_UNCREATABLE("Comes with the application")
};

struct ContentRouterType {
    Q_GADGET
    QML_FOREIGN(corvane::ContentRouter)
    QML_NAMED_ELEMENT(ContentRouter)
    QML_UNCREATABLE("Comes with the application")
};

struct CorvaneAppType {
    Q_GADGET
    QML_FOREIGN(corvane::CorvaneApp)
    QML_NAMED_ELEMENT(CorvaneApp)
    QML_UNCREATABLE("Comes with the application")
};

struct DialogFilePanelsType {
    Q_GADGET
    QML_FOREIGN(corvane::DialogFilePanels)
    QML_NAMED_ELEMENT(DialogFilePanels)
    QML_UNCREATABLE("Comes with the application")
};

struct HelpDocumentType {
    Q_GADGET
    QML_FOREIGN(corvane::HelpDocument)
    QML_NAMED_ELEMENT(HelpDocument)
    QML_UNCREATABLE("Comes with the application")
};

struct ProjectHeaderType {
    Q_GADGET
    QML_FOREIGN(corvane::ProjectHeader)
    QML_NAMED_ELEMENT(ProjectHeader)
    QML_UNCREATABLE("Comes with the application")
};

struct ProjectSetupType {
    Q_GADGET
    QML_FOREIGN(corvane::ProjectSetup)
    QML_NAMED_ELEMENT(ProjectSetup)
    QML_UNCREATABLE("Comes with the application")
};

struct RecentProjectsModelType {
    Q_GADGET
    QML_FOREIGN(corvane::RecentProjectsModel)
    QML_NAMED_ELEMENT(RecentProjectsModel)
    QML_UNCREATABLE("Comes with the application")
};

struct UpdaterControllerType {
    Q_GADGET
    QML_FOREIGN(corvane::UpdaterController)
    QML_NAMED_ELEMENT(UpdaterController)
    QML_UNCREATABLE("Comes with the application")
};

} // namespace corvane::shellTypes
