#include "Set.h"

#include <QQuickItem>

namespace corvane {

namespace {

constexpr QSize kSmall(1280, 800);
constexpr QSize kLarge(1920, 1080);

void markRow(Set &set, const char *fileName) {
    const QString id = QStringLiteral("clip-") + Shoot::clip(set.app(), fileName);
    const ReviewListModel &list = set.review().list();
    for (int row = 0; row < list.rowCount(); ++row) {
        if (list.index(row).data(ReviewListModel::RowIdRole) == id) {
            set.review().clickRow(row, Qt::ControlModifier);
        }
    }
}

void press(Set &set, int key, Qt::KeyboardModifiers modifiers = {}) {
    set.review().handleKeyDown(key, modifiers, false);
}

bool inSubclipMode(Set &set) {
    set.review().filterBar().click(FilterBar::Chip::showRejects);
    set.review().filterBar().setSearchQuery(QStringLiteral("tide"));
    if (!set.show(Shoot::kMain, 0)) {
        return false;
    }
    const Subclip second = set.review().selectedVideo()->subclips.at(1);
    set.review().activateSubclip(second);
    if (!set.seek(second.inSeconds + 1.1)) {
        return false;
    }
    press(set, Qt::Key_I);
    if (!set.seek(second.inSeconds + 4.6)) {
        return false;
    }
    press(set, Qt::Key_O);
    markRow(set, "A003_C007_0612.MOV");
    markRow(set, "A003_C008_0612.MOV");
    set.review().toggleSubclipDrawer();
    set.app().store().setStatus(QStringLiteral("Marked 2 subclips for export"));
    return set.seek(second.inSeconds + 2.8) && set.isDrawn();
}

ScreenPicture subclipMode(const char *name, QSize size, int sidePane) {
    return Set::picture(
        name,
        [sidePane](Set &set) {
            set.widenSidePane(sidePane);
            return inSubclipMode(set);
        },
        size);
}

bool marking(Set &set) {
    set.widenSidePane(300);
    set.review().filterBar().chooseRating(4);
    if (!set.show(Shoot::kMain, 12.96)) {
        return false;
    }
    press(set, Qt::Key_I);
    if (!set.seek(16.2)) {
        return false;
    }
    press(set, Qt::Key_O);
    if (!set.seek(17.2) || !set.isDrawn()) {
        return false;
    }
    set.review().togglePlayback();
    return waitUntil([&set] { return set.screen().engine()->isPlaying(); });
}

bool largeThumbnails(Set &set) {
    set.widenSidePane(300);
    set.review().filterBar().setUseLargeThumbnails(true);
    set.app().store().setStatus(QStringLiteral("Cleared 2 clips from selects"));
    return set.show(Shoot::kMain, 17.2) && set.isDrawn();
}

bool inspector(Set &set) {
    set.widenSidePane(300);
    set.review().toggleSubclipDrawer();
    if (!set.show(Shoot::kMain, 17.2)) {
        return false;
    }
    set.review().toggleInspector();
    const auto newTag = [&set] {
        return set.window().findChild<QQuickItem *>(QStringLiteral("inspector.newTag"));
    };
    if (!waitUntil([&] { return newTag() != nullptr; }) || !set.isDrawn()) {
        return false;
    }
    newTag()->forceActiveFocus(Qt::TabFocusReason);
    return true;
}

bool nothingMatches(Set &set) {
    set.widenSidePane(300);
    set.review().filterBar().setSearchQuery(QStringLiteral("rain on glass"));
    set.review().filterBar().click(FilterBar::Chip::favorites);
    return set.isDrawn();
}

bool askedAboutRows(Set &set) {
    set.widenSidePane(300);
    if (!set.show(Shoot::kMain, 17.2)) {
        return false;
    }
    markRow(set, "A003_C007_0612.MOV");
    markRow(set, "A003_C008_0612.MOV");
    if (!set.isDrawn()) {
        return false;
    }
    press(set, Qt::Key_Delete);
    return set.review().hasConfirmation();
}

} // namespace

QList<ScreenPicture> reviewPictures() {
    return {
        subclipMode("review", {1440, 900}, 300),
        subclipMode("review-1280x800", kSmall, 220),
        subclipMode("review-1920x1080", kLarge, 380),
        subclipMode("review-narrow", kSmall, 160),
        Set::picture("review-marking", marking),
        Set::picture("review-large", largeThumbnails),
        Set::picture("review-inspector", inspector),
        Set::picture("review-empty", nothingMatches, {1440, 900}, "Tidewater Day 3.corvane"),
        Set::picture("alert-confirm", askedAboutRows),
    };
}

} // namespace corvane
