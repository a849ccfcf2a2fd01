#include "kit/IconTable.h"
#include "support/screens/Screen.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
#include <QRawFont>
#include <QRegularExpression>

namespace corvane::test {
namespace {

/// The source of every QML file by its name.
QHash<QString, QString> screenFiles() {
    QHash<QString, QString> files;
    QDirIterator entries(QStringLiteral(CORVANE_SOURCE_FOLDER), {QStringLiteral("*.qml")},
                         QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        QFile file(entries.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        files.insert(entries.fileName(), QString::fromUtf8(file.readAll()));
    }
    return files;
}

TEST(GalleryTest, FocusableItemsHaveAnAccessibleNameAndRole) {
    Screen screen("import Corvane.Gallery\nGallery {}", {1440, 1240});
    int count = 0;
    for (QQuickItem *item : screen.visibleItems()) {
        if (!item->activeFocusOnTab()) {
            continue;
        }
        ++count;
        const char *type = item->metaObject()->className();
        EXPECT_FALSE(Screen::accessibleName(item).isEmpty()) << type;
        EXPECT_NE(Screen::accessibleRole(item), int(QAccessible::NoRole)) << type;
        EXPECT_NE(Screen::accessibleRole(item), int(QAccessible::Client)) << type;
    }
    EXPECT_GT(count, 40);
    screen.picture("gallery");
}

TEST(GalleryTest, EverySymbolInQmlIsInTheTableAndTheFont) {
    const IconTable table;
    const QStringList symbols = table.symbols();
    const QRegularExpression use(QStringLiteral(R"([sS]ymbol: (.*(?:\n *[?:].*)*))"));
    const QRegularExpression literal(QStringLiteral(R"x((?<![!=]= )"([a-z][a-z.]+)")x"));
    const QHash<QString, QString> files = screenFiles();
    int count = 0;
    for (auto file = files.begin(); file != files.end(); ++file) {
        for (auto line = use.globalMatch(*file); line.hasNext();) {
            const QString value = line.next().captured(1);
            for (auto name = literal.globalMatch(value); name.hasNext(); ++count) {
                const QString symbol = name.next().captured(1);
                EXPECT_TRUE(symbols.contains(symbol))
                    << file.key().toStdString() << ": " << symbol.toStdString();
            }
        }
    }
    EXPECT_GT(count, 10);
    const QRawFont font = QRawFont::fromFont(QFont(table.family()));
    EXPECT_EQ(font.familyName(), table.family());
    for (const QString &symbol : symbols) {
        EXPECT_TRUE(font.supportsCharacter(table.glyph(symbol)[0])) << symbol.toStdString();
    }
}

TEST(GalleryTest, OnlyTheThemeContainsColors) {
    const QRegularExpression color(
        QStringLiteral(R"x("#[0-9A-Fa-f]{3,8}"|Qt\.(rgba|hsla)\(|color: "[a-z])x"));
    const QHash<QString, QString> files = screenFiles();
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (file.key() != QLatin1String("Theme.qml")) {
            EXPECT_FALSE(file->contains(color)) << file.key().toStdString();
        }
    }
}

} // namespace
} // namespace corvane::test
