#pragma once

#include <QObject>

namespace corvane {

/// What a menu asks of the screen that is showing. A command ends in an operation of the store or
/// in one of these; there is no other way between them, and none carries anything. Main thread.
class AppRequests : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

  Q_SIGNALS:
    void newProjectRequested();     ///< "Corvane.NewProjectRequested": show the setup screen
    void openProjectRequested();    ///< "Corvane.OpenProjectRequested": run the open panel
    void importRequested();         ///< "Corvane.ImportRequested": open the import flow
    void exportRequested();         ///< "Corvane.ExportRequested": open the export flow
    void selectsHandoffRequested(); ///< "Corvane.SelectsHandoffRequested": open the handoff flow
};

} // namespace corvane
