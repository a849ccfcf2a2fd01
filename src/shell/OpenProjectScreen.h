#pragma once

#include <QObject>

namespace corvane {

/// Interface of the screen of open projects, which the program loads on demand. Main thread only.
class OpenProjectScreen : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// True while an import, an export or a handoff is in progress.
    virtual bool isRunning() const = 0;
    /// Ends the run in progress soon, leaving complete files and no temporary ones. `isRunning`
    /// becomes false when it has ended.
    virtual void cancelRuns() = 0;

  Q_SIGNALS:
    void isRunningChanged();
};

} // namespace corvane
