#pragma once

#include "delivery/DeliveryResults.h"

#include <QStringList>

/// The value types that a `DeliverySheet` exposes to QML.
namespace corvane {

/// A choice among a few values.
struct DeliveryChoice {
    Q_GADGET
    Q_PROPERTY(QStringList labels MEMBER labels)
    Q_PROPERTY(int index MEMBER index)
    Q_PROPERTY(QString help MEMBER help)

  public:
    QStringList labels;
    int index = -1; ///< of the current value
    QString help;   ///< about the current value
};

/// The lines of a run. Before its first row, all texts but `line` are empty.
struct DeliveryRunTexts {
    Q_GADGET
    Q_PROPERTY(QString line MEMBER line)
    Q_PROPERTY(QString percent MEMBER percent)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(QString details MEMBER details)
    Q_PROPERTY(QString timeLeft MEMBER timeLeft)

  public:
    QString line;
    QString percent;
    double fraction = 0; ///< of the entire run, 0 to 1
    QString details;
    QString timeLeft;
};

/// The result of a run. Lines that do not apply are empty.
struct DeliveryResultTexts {
    Q_GADGET
    Q_PROPERTY(QString headline MEMBER headline)
    Q_PROPERTY(QString line MEMBER line)
    Q_PROPERTY(QString path MEMBER path)
    Q_PROPERTY(QString errorLine MEMBER errorLine)
    Q_PROPERTY(QString backupLine MEMBER backupLine)
    Q_PROPERTY(int succeeded MEMBER succeeded)
    Q_PROPERTY(int failed MEMBER failed)
    Q_PROPERTY(int cancelled MEMBER cancelled)
    Q_PROPERTY(QString folder MEMBER folder)

  public:
    QString headline;
    QString line; ///< name of the manifest or path of the package
    QString path; ///< of the manifest or the package
    QString errorLine;
    QString backupLine;
    int succeeded = 0;
    int failed = 0;
    int cancelled = 0;
    QString folder;
    QList<DeliveryResult> rows;
};

} // namespace corvane
