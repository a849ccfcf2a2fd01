#pragma once

#include <QObject>

namespace corvane {

/// Requests from commands to the current screen. A command either calls an operation of the store
/// or emits one of these signals. Main thread only.
class AppRequests : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

  Q_SIGNALS:
    void newProjectRequested();         ///< "Corvane.NewProjectRequested": show the setup screen
    void openProjectRequested();        ///< "Corvane.OpenProjectRequested": run the open panel
    void saveCopyRequested();           ///< ask where to save a copy of the project
    void closeWithoutSavingRequested(); ///< ask whether to discard unsaved edits
    void importRequested();             ///< "Corvane.ImportRequested": open the import flow
    void exportRequested();             ///< "Corvane.ExportRequested": open the export flow
    void selectsHandoffRequested(); ///< "Corvane.SelectsHandoffRequested": open the handoff flow
};

} // namespace corvane
