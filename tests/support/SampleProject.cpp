#include "support/SampleProject.h"

#include <gtest/gtest.h>

#include <QFile>

namespace corvane::test {

namespace {

QDateTime sampleDate() {
    return QDateTime::fromMSecsSinceEpoch(1772357412345, Qt::UTC);
}

} // namespace

VideoItem sampleVideo(const QString &id) {
    return VideoRecord{.id = id,
                       .sourcePath = QStringLiteral("/footage/") + id,
                       .fileName = id,
                       .parentFolder = QStringLiteral("/footage"),
                       .durationSeconds = 12.5,
                       .createdAt = sampleDate(),
                       .updatedAt = sampleDate()};
}

Subclip sampleSubclip(const QString &id, const QString &videoId, int creationIndex) {
    return {.id = id,
            .sourceVideoId = videoId,
            .inSeconds = 1.25 * creationIndex,
            .outSeconds = 1.25 * creationIndex + 1,
            .createdAt = sampleDate(),
            .creationIndex = creationIndex};
}

Project sampleProject(int videos, int subclipsPerVideo) {
    Project project{.id = QStringLiteral("8D7C8C0E-2B6C-4F52-9A35-0D9C6A1F1B11"),
                    .name = QStringLiteral("Harbor"),
                    .createdAt = sampleDate(),
                    .updatedAt = sampleDate()};
    for (int v = 0; v < videos; ++v) {
        VideoItem video = sampleVideo(QStringLiteral("clip-%1").arg(v));
        for (int s = 0; s < subclipsPerVideo; ++s) {
            video.edit().subclips.append(
                sampleSubclip(QStringLiteral("%1-sub-%2").arg(video->id).arg(s), video->id, s + 1));
        }
        project.videos.append(video);
    }
    return project;
}

QByteArray fullProjectText() {
    QFile file(QStringLiteral(CORVANE_FULL_PROJECT));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

Project fullProject() {
    return decodeJSON<Project>(JSONDocument::parse(fullProjectText()).root());
}

} // namespace corvane::test
