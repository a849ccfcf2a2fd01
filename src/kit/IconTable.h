#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Maps symbol names such as "film" or "chevron.left" to code points of the icon font, and loads
/// that font when the first table is constructed. Main thread, with a QGuiApplication.
class IconTable : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString family READ family CONSTANT)
    Q_PROPERTY(QStringList symbols READ symbols CONSTANT)

  public:
    explicit IconTable(QObject *parent = nullptr);

    [[nodiscard]] QString family() const;
    [[nodiscard]] QStringList symbols() const;

    /// The string that draws `symbol` in the icon font; empty for an empty name. Throws a
    /// JavaScript error for an unknown name, or logs it if no QML engine called.
    Q_INVOKABLE QString glyph(const QString &symbol) const;
};

} // namespace corvane
