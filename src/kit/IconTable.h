#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// The symbols of the screens and the characters of the icon font that draw them.
namespace corvane {

/// Looked up by the names that the screens use ("film", "chevron.left"). The font is the family
/// that `family` names, which the first table adds to the application's; a symbol is one code point
/// in it. Main thread, with a QGuiApplication.
class IconTable : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString family READ family CONSTANT)
    Q_PROPERTY(QStringList symbols READ symbols CONSTANT)

  public:
    explicit IconTable(QObject *parent = nullptr);

    [[nodiscard]] QString family() const;

    /// All symbols, in the order of the table.
    [[nodiscard]] QStringList symbols() const;

    /// The text that draws `symbol`. A symbol that isn't in the table is a fault of the screen that
    /// asked: it raises an error there and draws nothing. The empty symbol draws nothing.
    Q_INVOKABLE QString glyph(const QString &symbol) const;

  private:
    QHash<QString, char32_t> m_codePoints;
};

} // namespace corvane
