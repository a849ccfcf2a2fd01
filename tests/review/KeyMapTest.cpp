#include "review/KeyMap.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace corvane {

namespace {

/// The keys that have a command with these modifiers, in numeric order.
QList<int> mappedKeys(Qt::KeyboardModifiers modifiers) {
    QList<int> keys;
    for (int key = 0; key <= Qt::Key_F35;
         key = key == Qt::Key_ydiaeresis ? Qt::Key_Escape : key + 1) {
        if (KeyMap::command(key, modifiers)) {
            keys.append(key);
        }
    }
    return keys;
}

} // namespace

TEST(KeyMap, MapsOnlyTheKeysOfTheReviewAndIgnoresOtherModifiers) {
    QList<int> plain{Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Left, Qt::Key_Right};
    for (const QChar key : QStringLiteral(" ,.012345FIJKLORSX[]")) {
        plain.append(key.unicode());
    }
    std::ranges::sort(plain);
    for (const Qt::KeyboardModifiers more :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier),
          Qt::KeyboardModifiers(Qt::KeypadModifier), Qt::ShiftModifier | Qt::KeypadModifier}) {
        EXPECT_EQ(mappedKeys(more), plain) << more.toInt();
        EXPECT_EQ(mappedKeys(more | Qt::ControlModifier), QList<int>{Qt::Key_Z}) << more.toInt();
        EXPECT_EQ(mappedKeys(more | Qt::AltModifier), QList<int>()) << more.toInt();
        EXPECT_EQ(mappedKeys(more | Qt::MetaModifier | Qt::ControlModifier), QList<int>())
            << more.toInt();
    }
}

TEST(KeyMap, ListsTheSameKeysAsTheUserGuide) {
    QSet<QString> mapped{QStringLiteral("Delete"), QStringLiteral("Ctrl"), QStringLiteral("Shift")};
    for (const QString &text : KeyMap::guideKeys()) {
        const QStringList keys = text.split(QStringLiteral(" to ")); // the ends of "0 to 5"
        mapped.unite(QSet<QString>(keys.begin(), keys.end()));
    }
    QFile guide(QStringLiteral(CORVANE_USER_GUIDE));
    ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(guide.readAll());
    const qsizetype begin = text.indexOf(QStringLiteral("### Playing"));
    const qsizetype end = text.indexOf(QStringLiteral("## Export"), begin);
    QSet<QString> named;
    const QRegularExpression key(QStringLiteral("`([^`]+)`"));
    for (const auto &match : key.globalMatch(text.mid(begin, end - begin))) {
        named.insert(match.captured(1));
    }
    named.remove(QStringLiteral("1")); // "1 to 5 rate, 0 clears"
    EXPECT_EQ(named, mapped);
}

} // namespace corvane
