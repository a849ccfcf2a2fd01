#pragma once

#include "media/ExportSession.h"
#include "support/Command.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <QFile>

namespace corvane::test {

/// Runs export sessions on clips in a temporary folder and examines the output with `ffmpeg` and
/// `ffprobe`.
class SessionTest : public testing::Test {
  protected:
    static QByteArray ran(const char *program, const QString &arguments) {
        const CommandResult result =
            runCommand(QStringList(QLatin1String(program)) + arguments.split(QLatin1Char(' ')));
        EXPECT_EQ(result.exitCode, 0) << program << ' ' << arguments.toStdString();
        return result.output;
    }

    QString clip(const char *name, const ClipOptions &options) const {
        return makeClip(folder.at(name), options);
    }

    /// Exports to "out.mp4". Returns the failure's text, "none" if there is no session, or "" on
    /// success.
    std::string exported(const QString &source, media::ExportPreset preset,
                         std::optional<media::MediaTimeRange> range = {}) {
        try {
            const auto session = media::ffmpegExportSessions().create(source, preset);
            if (!session) {
                return "none";
            }
            folder.write("out.mp4", {});
            session->run(output, range, stop.get_token());
            EXPECT_EQ(session->progress(), 1);
        } catch (const Failure &failure) {
            return failure.what();
        }
        return {};
    }

    /// The numbers drawn into the frames that a player shows, in presentation order.
    QList<int> shownFrames(QSize size = {320, 180}) const {
        const QByteArray frames =
            ran("ffmpeg",
                QStringLiteral("-v error -noautorotate -i %1 -map 0:v:0 -fps_mode passthrough "
                               "-f rawvideo -pix_fmt gray -")
                    .arg(output));
        QList<int> numbers;
        const qsizetype bytes = qsizetype(size.width()) * size.height();
        for (qsizetype at = 0; at + bytes <= frames.size(); at += bytes) {
            const auto brightness = [&](int x, int y) {
                return uchar(frames.at(at + qsizetype(y) * size.width() + x)) / 255.0;
            };
            numbers.append(frameNumber(size, 0, brightness).value_or(-1));
        }
        return numbers;
    }
    static QList<int> numbers(int first, int count) {
        QList<int> list(count);
        std::iota(list.begin(), list.end(), first);
        return list;
    }

    /// Entries of the output as values only, the lines joined by spaces.
    std::string probed(const char *streams, const char *entries) const {
        return probedFile(output, streams, entries);
    }
    static std::string probedFile(const QString &file, const char *streams, const char *entries) {
        const QString arguments = QStringLiteral("-v error -select_streams %1 -show_entries %2 -of "
                                                 "csv=p=0 %3");
        return ran("ffprobe", arguments.arg(QLatin1String(streams), QLatin1String(entries), file))
            .simplified()
            .toStdString();
    }

    TestFolder folder;
    const QString output = folder.at("out.mp4");
    std::stop_source stop;
};

/// The range of the frames from `first` up to but not including `end`.
inline media::MediaTimeRange frameRange(int first, int end, double rate = 25) {
    return media::MediaTimeRange::fromSeconds(first / rate, end / rate);
}

} // namespace corvane::test
