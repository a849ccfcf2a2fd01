#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Help texts of the stars of a rating.
class StarHelp : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// For one star to five.
    Q_PROPERTY(QStringList stars READ stars CONSTANT)
    Q_PROPERTY(QString clear READ clear CONSTANT)

  public:
    using QObject::QObject;

    static QStringList stars();
    static QString clear() { return QStringLiteral("Clear rating (0 key)"); }
};

} // namespace corvane
