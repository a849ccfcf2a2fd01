#pragma once

#include "review/list/ReviewState.h"

#include <QRandomGenerator>

namespace corvane::test {

inline Subclip makeSubclip(const QString &id, int creationIndex) {
    Subclip subclip;
    subclip.id = id;
    subclip.creationIndex = creationIndex;
    return subclip;
}

inline VideoRecord makeVideo(const QString &id, const QString &fileName) {
    VideoRecord video;
    video.id = id;
    video.fileName = fileName;
    return video;
}

/// Random small projects with all fields that a filter reads. Deterministic for a seed.
class RandomProject {
  public:
    explicit RandomProject(quint32 seed) : m_random(seed) {}

    Project make() {
        Project project;
        for (int index = m_random.bounded(12); index > 0; --index) {
            project.videos.append(video(QStringLiteral("V%1").arg(index)));
        }
        return project;
    }

    ReviewState state() {
        ReviewState state;
        state.unreviewedOnly = chance(4);
        state.favoritesOnly = chance(4);
        state.selectedOnly = chance(3);
        state.subclipsView = chance(3);
        state.includeRejects = chance(2);
        state.searchQuery = chance(2) ? QStringLiteral("  ") + text() : QString();
        state.ratingFilter = chance(2) ? ReviewState::RatingFilter()
                             : chance(3)
                                 ? ReviewState::RatingFilter::fiveOnly()
                                 : ReviewState::RatingFilter::threshold(m_random.bounded(5));
        return state;
    }

    /// Makes one random change as a review could.
    void change(Project &project) {
        if (project.videos.isEmpty() || chance(6)) {
            const QString id = QStringLiteral("N%1").arg(++m_added);
            project.videos.insert(m_random.bounded(int(project.videos.size()) + 1), video(id));
            return;
        }
        const int index = m_random.bounded(int(project.videos.size()));
        if (chance(8)) {
            project.videos.removeAt(index);
        } else if (chance(8)) {
            project.videos.swapItemsAt(index, 0);
        } else {
            changeClip(project.videos[index].edit());
        }
    }

  private:
    void changeClip(VideoRecord &video) {
        video.rating = m_random.bounded(6);
        video.selectedForExport = chance(2);
        video.fileName = chance(3) ? text() : video.fileName;
        if (video.subclips.isEmpty() || chance(3)) {
            video.subclips.append(
                makeSubclip(video.id + QStringLiteral("+%1").arg(++m_added), m_random.bounded(3)));
        } else if (chance(2)) {
            video.subclips.removeFirst();
        } else {
            video.subclips.last().label = maybeText();
            video.subclips.last().favorite = chance(2);
        }
    }
    bool chance(int oneIn) { return m_random.bounded(oneIn) == 0; }
    QString text() {
        static const QStringList words{QStringLiteral("Gull"), QStringLiteral("GULL wide"),
                                       QStringLiteral("ÄRA 2"), QStringLiteral("l w")};
        return words.at(m_random.bounded(int(words.size())));
    }
    std::optional<QString> maybeText() { return chance(3) ? std::optional(text()) : std::nullopt; }

    VideoItem video(const QString &id) {
        VideoRecord video = makeVideo(id, chance(2) ? text() : QStringLiteral("a.mov"));
        video.rating = m_random.bounded(6);
        video.rejected = chance(3);
        video.favorite = chance(2);
        video.selectedForExport = chance(2);
        video.reviewed = chance(2);
        video.notes = maybeText();
        if (chance(3)) {
            video.tags = {QStringLiteral("tag"), text()};
        }
        for (int index = m_random.bounded(4); index > 0; --index) {
            Subclip subclip =
                makeSubclip(id + QStringLiteral("-%1").arg(index), m_random.bounded(3));
            subclip.rating = chance(2) ? 0 : m_random.bounded(6);
            subclip.favorite = chance(2);
            subclip.selectedForExport = chance(2);
            subclip.label = maybeText();
            subclip.notes = maybeText();
            video.subclips.append(subclip);
        }
        return video;
    }

    QRandomGenerator m_random;
    int m_added = 0;
};

} // namespace corvane::test
