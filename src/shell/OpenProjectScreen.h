#pragma once

#include <QObject>

namespace corvane {

/// The screen of an open project as the program around it knows it. Main thread.
class OpenProjectScreen : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether an import, an export or a handoff is in work.
    virtual bool isRunning() const = 0;
    /// Asks what runs to end soon, with whole files and nothing temporary left. `isRunning` falls
    /// when it has.
    virtual void endRuns() = 0;

  Q_SIGNALS:
    void isRunningChanged();
};

} // namespace corvane
