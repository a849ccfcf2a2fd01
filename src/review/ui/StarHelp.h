#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// What the stars of a rating say about themselves. Main thread.
class StarHelp : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Of each star, the first first.
    Q_PROPERTY(QStringList stars READ stars CONSTANT)
    Q_PROPERTY(QString clear READ clear CONSTANT)

  public:
    using QObject::QObject;

    static QStringList stars();
    static QString clear() { return QStringLiteral("Clear rating (0 key)"); }
};

} // namespace corvane
