#include "ProjectWindow.h"

#include <QQuickItem>

namespace corvane {

namespace {

constexpr QSize kSmall(1280, 800);
constexpr QSize kLarge(1920, 1080);

void markRow(ProjectWindow &projectWindow, const char *fileName) {
    const QString id = QStringLiteral("clip-") + SampleShoot::clip(projectWindow.app(), fileName);
    const ReviewListModel &list = *projectWindow.review().list();
    for (int row = 0; row < list.rowCount(); ++row) {
        if (list.index(row).data(ReviewListModel::RowIdRole) == id) {
            projectWindow.review().selection()->clickRow(row, Qt::ControlModifier);
        }
    }
}

void press(ProjectWindow &projectWindow, int key, Qt::KeyboardModifiers modifiers = {}) {
    projectWindow.review().handleKeyDown(key, modifiers, false);
}

bool inSubclipMode(ProjectWindow &projectWindow) {
    projectWindow.review().filterBar()->click(FilterBar::Chip::showRejects);
    projectWindow.review().filterBar()->setSearchQuery(QStringLiteral("tide"));
    if (!projectWindow.show(SampleShoot::kMainClip, 0)) {
        return false;
    }
    const Subclip second = projectWindow.review().selection()->selectedVideo()->subclips.at(1);
    projectWindow.review().selection()->activateSubclip(second);
    if (!projectWindow.seek(second.inSeconds + 1.1)) {
        return false;
    }
    press(projectWindow, Qt::Key_I);
    if (!projectWindow.seek(second.inSeconds + 4.6)) {
        return false;
    }
    press(projectWindow, Qt::Key_O);
    markRow(projectWindow, "A003_C007_0612.MOV");
    markRow(projectWindow, "A003_C008_0612.MOV");
    projectWindow.review().panes()->toggleSubclipDrawer();
    projectWindow.app().store().setStatus(QStringLiteral("Marked 2 subclips for export"));
    return projectWindow.seek(second.inSeconds + 2.8) && projectWindow.waitUntilDrawn();
}

Screenshot subclipMode(const char *name, QSize size, int sidePane) {
    return ProjectWindow::screenshot(
        name,
        [sidePane](ProjectWindow &projectWindow) {
            projectWindow.resizeSidePane(sidePane);
            return inSubclipMode(projectWindow);
        },
        size);
}

bool marking(ProjectWindow &projectWindow) {
    projectWindow.resizeSidePane(300);
    projectWindow.review().filterBar()->chooseRating(4);
    if (!projectWindow.show(SampleShoot::kMainClip, 12.96)) {
        return false;
    }
    press(projectWindow, Qt::Key_I);
    if (!projectWindow.seek(16.2)) {
        return false;
    }
    press(projectWindow, Qt::Key_O);
    if (!projectWindow.seek(17.2) || !projectWindow.waitUntilDrawn()) {
        return false;
    }
    projectWindow.review().transport()->togglePlayback();
    return waitUntil([&projectWindow] { return projectWindow.screen().engine()->isPlaying(); });
}

bool largeThumbnails(ProjectWindow &projectWindow) {
    projectWindow.resizeSidePane(300);
    projectWindow.review().filterBar()->setUseLargeThumbnails(true);
    projectWindow.app().store().setStatus(QStringLiteral("Cleared 2 clips from selects"));
    return projectWindow.show(SampleShoot::kMainClip, 17.2) && projectWindow.waitUntilDrawn();
}

bool inspector(ProjectWindow &projectWindow) {
    projectWindow.resizeSidePane(300);
    projectWindow.review().panes()->toggleSubclipDrawer();
    if (!projectWindow.show(SampleShoot::kMainClip, 17.2)) {
        return false;
    }
    projectWindow.review().panes()->toggleInspector();
    const auto newTag = [&projectWindow] {
        return projectWindow.window().findChild<QQuickItem *>(QStringLiteral("inspector.newTag"));
    };
    if (!waitUntil([&] { return newTag() != nullptr; }) || !projectWindow.waitUntilDrawn()) {
        return false;
    }
    newTag()->forceActiveFocus(Qt::TabFocusReason);
    return true;
}

bool nothingMatches(ProjectWindow &projectWindow) {
    projectWindow.resizeSidePane(300);
    projectWindow.review().filterBar()->setSearchQuery(QStringLiteral("rain on glass"));
    projectWindow.review().filterBar()->click(FilterBar::Chip::favorites);
    return projectWindow.waitUntilDrawn();
}

bool confirmation(ProjectWindow &projectWindow) {
    projectWindow.resizeSidePane(300);
    if (!projectWindow.show(SampleShoot::kMainClip, 17.2)) {
        return false;
    }
    markRow(projectWindow, "A003_C007_0612.MOV");
    markRow(projectWindow, "A003_C008_0612.MOV");
    if (!projectWindow.waitUntilDrawn()) {
        return false;
    }
    press(projectWindow, Qt::Key_Delete);
    return projectWindow.review().hasConfirmation();
}

} // namespace

QList<Screenshot> reviewScreenshots() {
    return {
        subclipMode("review", {1440, 900}, 300),
        subclipMode("review-1280x800", kSmall, 220),
        subclipMode("review-1920x1080", kLarge, 380),
        subclipMode("review-narrow", kSmall, 160),
        ProjectWindow::screenshot("review-marking", marking),
        ProjectWindow::screenshot("review-large", largeThumbnails),
        ProjectWindow::screenshot("review-inspector", inspector),
        ProjectWindow::screenshot("review-empty", nothingMatches, {1440, 900},
                                  "Tidewater Day 3.corvane"),
        ProjectWindow::screenshot("alert-confirm", confirmation),
    };
}

} // namespace corvane
