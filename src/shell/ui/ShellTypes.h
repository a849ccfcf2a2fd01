#pragma once

#include "shell/CorvaneApp.h"

#include <QtQml/qqml.h>

/// Registers the types of the layer below as QML types. The application creates the instances.
namespace corvane::shellTypes {

struct AppCommandType {
    Q_GADGET
    QML_FOREIGN(corvane::AppCommand)
    QML_NAMED_ELEMENT(AppCommand)
    QML_UNCREATABLE("The application creates it")
};

struct AppCommandsType {
    Q_GADGET
    QML_FOREIGN(corvane::AppCommands)
    QML_NAMED_ELEMENT(AppCommands)
    QML_UNCREATABLE("The application creates it")
};

struct ContentRouterType {
    Q_GADGET
    QML_FOREIGN(corvane::ContentRouter)
    QML_NAMED_ELEMENT(ContentRouter)
    QML_UNCREATABLE("The application creates it")
};

struct CorvaneAppType {
    Q_GADGET
    QML_FOREIGN(corvane::CorvaneApp)
    QML_NAMED_ELEMENT(CorvaneApp)
    QML_UNCREATABLE("The application creates it")
};

struct DialogFilePanelsType {
    Q_GADGET
    QML_FOREIGN(corvane::DialogFilePanels)
    QML_NAMED_ELEMENT(DialogFilePanels)
    QML_UNCREATABLE("The application creates it")
};

struct HelpDocumentType {
    Q_GADGET
    QML_FOREIGN(corvane::HelpDocument)
    QML_NAMED_ELEMENT(HelpDocument)
    QML_UNCREATABLE("The application creates it")
};

struct ProjectHeaderType {
    Q_GADGET
    QML_FOREIGN(corvane::ProjectHeader)
    QML_NAMED_ELEMENT(ProjectHeader)
    QML_UNCREATABLE("The application creates it")
};

struct ProjectSetupType {
    Q_GADGET
    QML_FOREIGN(corvane::ProjectSetup)
    QML_NAMED_ELEMENT(ProjectSetup)
    QML_UNCREATABLE("The application creates it")
};

struct RecentProjectsModelType {
    Q_GADGET
    QML_FOREIGN(corvane::RecentProjectsModel)
    QML_NAMED_ELEMENT(RecentProjectsModel)
    QML_UNCREATABLE("The application creates it")
};

struct UpdaterControllerType {
    Q_GADGET
    QML_FOREIGN(corvane::UpdaterController)
    QML_NAMED_ELEMENT(UpdaterController)
    QML_UNCREATABLE("The application creates it")
};

} // namespace corvane::shellTypes
