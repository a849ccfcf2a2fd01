#pragma once

#include "review/ReviewScreenState.h"
#include "support/Await.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <cmath>

namespace corvane::test {

/// A player without media that moves to every requested position within the clip and the range.
class FakePlayer : public ReviewPlayer {
  public:
    double currentSeconds() const override { return current; }
    double durationSeconds() const override { return duration; }
    double rate() const override { return shownRate; }
    double fps() const override { return frameRate; }
    bool isReady() const override { return ready; }
    bool isSettled() const override { return pendingSteps == 0; }
    QCoro::Task<> load(QString path) override {
        loaded.append(path);
        clearPlaybackConstraint();
        current = 0;
        setRate(0);
        ready = false;
        Q_EMIT isReadyChanged();
        co_return;
    }
    void seek(double seconds) override {
        current = std::clamp(seconds, 0.0, duration);
        if (range) {
            current = std::clamp(current, range->inSeconds, range->outSeconds);
        }
        Q_EMIT currentTimeChanged();
    }
    void stepFrames(int frames) override {
        pendingSteps += frames;
        if (!delaysSteps) {
            settle();
        }
    }
    void setRate(double rate) override {
        shownRate = rate;
        Q_EMIT rateChanged();
    }
    void playConstrained(double inSeconds, double outSeconds) override {
        range = ClipRange{inSeconds, outSeconds};
    }
    void clearPlaybackConstraint() override { range.reset(); }

    void becomeReady() {
        ready = true;
        Q_EMIT isReadyChanged();
    }
    /// Carries out the steps.
    void settle() {
        seek(current + std::exchange(pendingSteps, 0) / frameRate);
        Q_EMIT settled();
    }

    QStringList loaded;
    double duration = 12.5;
    double current = 0;
    double shownRate = 0;
    double frameRate = 25;
    bool delaysSteps = false; ///< until `settle`
    int pendingSteps = 0;
    bool ready = false;
    std::optional<ClipRange> range;
};

class ReviewScreenTest : public testing::Test {
  protected:
    explicit ReviewScreenTest(const Project &project = sampleProject(4, 2)) {
        const QString file = folder.at("Harbor.corvane");
        await(io.save(project, file, false));
        await(store.openProject(file));
        await(store.flushPendingSave());
        screen.appear();
    }

    bool press(int key, Qt::KeyboardModifiers modifiers = {}) {
        return screen.handleKeyDown(key, modifiers, false);
    }
    /// Presses keys that are letters or digits.
    void type(const char *keys) {
        for (const QChar key : QString::fromLatin1(keys)) {
            EXPECT_TRUE(press(key.toUpper().unicode())) << keys;
        }
    }
    void click(const char *id, Qt::KeyboardModifiers modifiers = {}) {
        const QList<SidebarRowId> ids = screen.list()->orderedRowIds();
        const auto row = std::ranges::find_if(ids, [&](const SidebarRowId &row) {
            return row.subclipId.value_or(row.videoId) == QString::fromLatin1(id);
        });
        ASSERT_NE(row, ids.end()) << id;
        screen.selection()->clickRow(int(row - ids.begin()), modifiers);
    }
    void accept(bool yes = true) { screen.answerConfirmation(yes); }
    QString asked() const {
        return screen.confirmation() ? screen.confirmation()->title : QString();
    }
    const VideoRecord &clip(int index) const { return *store.project()->videos.at(index); }
    QStringList marked() {
        QStringList ids = screen.selection()->multiSelection().multiSelectedClipIds.values() +
                          screen.selection()->multiSelection().multiSelectedSubclipIds.values();
        ids.sort();
        return ids;
    }

    TestFolder folder;
    TestClock clock;
    ProjectFileIO io;
    ProjectRegistry registry{folder.at("data"), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{folder.at("data")};
    ProjectStore store{io, registry, backups, authorization, clock};
    FakePlayer player;
    ReviewScreenState screen{store, player};
};

} // namespace corvane::test
