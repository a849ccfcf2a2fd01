#include "kit/IconTable.h"

#include <QFontDatabase>
#include <QQmlEngine>

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

struct IconRow {
    QLatin1String symbol;
    ushort codePoint;
};

/// Code points of the family "Material Icons".
constexpr IconRow iconRows[] = {
    {QLatin1String("play.rectangle.fill"), 0xF06A},
    {QLatin1String("tray.and.arrow.down"), 0xE168},
    {QLatin1String("square.and.arrow.up"), 0xE6B8},
    {QLatin1String("shippingbox"), 0xE149},
    {QLatin1String("shippingbox.fill"), 0xE1A1},
    {QLatin1String("book.fill"), 0xEA19},
    {QLatin1String("info.circle"), 0xE88F},
    {QLatin1String("chevron.left"), 0xE5CB},
    {QLatin1String("exclamationmark.triangle"), 0xF083},
    {QLatin1String("exclamationmark.triangle.fill"), 0xE002},
    {QLatin1String("xmark"), 0xE5CD},
    {QLatin1String("xmark.circle"), 0xE888},
    {QLatin1String("xmark.circle.fill"), 0xE5C9},
    {QLatin1String("film"), 0xE8DA},
    {QLatin1String("waveform"), 0xE1B8},
    {QLatin1String("scissors"), 0xE14E},
    {QLatin1String("checkmark.circle.fill"), 0xE86C},
    {QLatin1String("heart.fill"), 0xE87D},
    {QLatin1String("heart"), 0xE87E},
    {QLatin1String("eye.fill"), 0xE8F4},
    {QLatin1String("clock"), 0xE8B5},
    {QLatin1String("play.fill"), 0xE037},
    {QLatin1String("pause.fill"), 0xE034},
    {QLatin1String("backward.frame.fill"), 0xE045},
    {QLatin1String("forward.frame.fill"), 0xE044},
    {QLatin1String("star.fill"), 0xE838},
    {QLatin1String("star"), 0xE83A},
    {QLatin1String("plus"), 0xE145},
    {QLatin1String("minus"), 0xE15B},
    {QLatin1String("search"), 0xE8B6},
    {QLatin1String("folder"), 0xE2C7},
    {QLatin1String("file"), 0xE24D},
    {QLatin1String("trash"), 0xE92E},
    {QLatin1String("chevron.right"), 0xE5CC},
    {QLatin1String("chevron.up"), 0xE5CE},
    {QLatin1String("chevron.down"), 0xE5CF},
    {QLatin1String("arrow.right"), 0xE5C8},
    {QLatin1String("checkmark"), 0xE5CA},
    {QLatin1String("calendar"), 0xE935},
};

} // namespace

IconTable::IconTable(QObject *parent) : QObject(parent) {
    // From the resources, because the system's font lookup may pick a compressed variant and the
    // first frame would wait for its decompression.
    [[maybe_unused]] static const int id = QFontDatabase::addApplicationFont(
        QStringLiteral(":/corvane/kit/MaterialIcons-Regular.ttf"));
}

QString IconTable::family() const {
    return QStringLiteral("Material Icons");
}

QStringList IconTable::symbols() const {
    QStringList names;
    for (const IconRow &row : iconRows) {
        names.append(row.symbol);
    }
    return names;
}

QString IconTable::glyph(const QString &symbol) const {
    if (symbol.isEmpty()) {
        return {};
    }
    const auto *const row = std::ranges::find_if(
        iconRows, [&](const IconRow &candidate) { return candidate.symbol == symbol; });
    if (row == std::end(iconRows)) {
        const QString message = QStringLiteral("No icon for the symbol \"%1\"").arg(symbol);
        if (QJSEngine *engine = qjsEngine(this)) {
            engine->throwError(message);
        } else {
            qCritical("%s", qUtf8Printable(message));
        }
        return {};
    }
    return QString(QChar(row->codePoint));
}

} // namespace corvane
