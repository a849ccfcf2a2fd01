#include "review/KeyMap.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

namespace corvane {

namespace {

using KeyMap::Action;
using KeyMap::Command;

struct ExpectedKey {
    Command plain;
    std::optional<Command> shifted; ///< with Shift, if different
};

QHash<int, ExpectedKey> expectedKeys() {
    QHash<int, ExpectedKey> keys{
        {Qt::Key_Space, {{Action::togglePlayback}, {}}},
        {Qt::Key_K, {{Action::stopPlayback}, {}}},
        {Qt::Key_J, {{Action::shuttleBackward}, {}}},
        {Qt::Key_L, {{Action::shuttleForward}, {}}},
        {Qt::Key_Comma, {{Action::stepFrames, -1}, {}}},
        {Qt::Key_Period, {{Action::stepFrames, 1}, {}}},
        {Qt::Key_Left, {{Action::skip, -5}, {}}},
        {Qt::Key_Right, {{Action::skip, 5}, {}}},
        {Qt::Key_I, {{Action::markIn}, Command{Action::nudgeIn}}},
        {Qt::Key_O, {{Action::markOut}, Command{Action::nudgeOut}}},
        {Qt::Key_Return, {{Action::saveDraft}, {}}},
        {Qt::Key_Enter, {{Action::saveDraft}, {}}},
        {Qt::Key_Escape, {{Action::leaveSubclipMode}, {}}},
        {Qt::Key_BracketLeft, {{Action::jumpToIn}, {}}},
        {Qt::Key_BracketRight, {{Action::jumpToOut}, {}}},
        {Qt::Key_F, {{Action::toggleFavorite}, {}}},
        {Qt::Key_S, {{Action::toggleSelected}, {}}},
        {Qt::Key_R, {{Action::toggleReviewed}, {}}},
        {Qt::Key_X, {{Action::toggleRejected}, {}}},
    };
    for (int rating = 0; rating <= 5; ++rating) {
        keys.insert(Qt::Key_0 + rating, {{Action::rate, rating}, {}});
    }
    return keys;
}

std::optional<Command> expectedCommand(int key, Qt::KeyboardModifiers modifiers) {
    static const QHash<int, ExpectedKey> keys = expectedKeys();
    const bool hasShift = modifiers.testFlag(Qt::ShiftModifier);
    if (modifiers & (Qt::MetaModifier | Qt::AltModifier)) {
        return std::nullopt;
    }
    if (modifiers.testFlag(Qt::ControlModifier)) {
        return key == Qt::Key_Z ? std::optional(Command{hasShift ? Action::redo : Action::undo})
                                : std::nullopt;
    }
    const auto found = keys.constFind(key);
    if (found == keys.cend()) {
        return std::nullopt;
    }
    return hasShift && found->shifted ? found->shifted : found->plain;
}

} // namespace

TEST(KeyMap, MapsEachKeyWithEachModifier) {
    QList<int> keys;
    for (int key = 0; key <= Qt::Key_ydiaeresis; ++key) {
        keys.append(key);
    }
    for (int key = Qt::Key_Escape; key <= Qt::Key_F35; ++key) {
        keys.append(key);
    }
    const Qt::KeyboardModifier all[] = {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                                        Qt::MetaModifier, Qt::KeypadModifier};
    for (int combination = 0; combination < 32; ++combination) {
        Qt::KeyboardModifiers modifiers;
        for (int which = 0; which < 5; ++which) {
            modifiers.setFlag(all[which], (combination >> which & 1) != 0);
        }
        for (const int key : keys) {
            ASSERT_EQ(KeyMap::command(key, modifiers), expectedCommand(key, modifiers))
                << key << " with " << combination;
        }
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
