#pragma once

#include "media/ExportSession.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <QFile>

namespace corvane::test {

inline QString text(const char *utf8) {
    return QString::fromUtf8(utf8);
}

/// Stands in for a media framework: an output is the preset's name, the range and the asset's
/// bytes.
class FakeSessions : public media::ExportSessionFactory {
  public:
    bool canCreateSessions() const override { return !isMissing; }
    std::unique_ptr<media::ExportSession> create(const QString &asset,
                                                 media::ExportPreset preset) override {
        assets.append(asset);
        return canNotCreate ? nullptr : std::make_unique<Session>(*this, asset, preset);
    }
    static QByteArray output(media::ExportPreset preset, const QByteArray &asset,
                             std::optional<media::MediaTimeRange> range = {}) {
        return rawValue(preset).toUtf8() + ' ' +
               (range ? QByteArray::number(range->in.value) + '-' +
                            QByteArray::number(range->out.value)
                      : "all") +
               ' ' + asset;
    }

    QStringList assets; ///< in the order in which they were opened
    bool canNotCreate = false;
    bool isMissing = false; ///< as in a build without a media framework
    /// Called half way through each output, on the executor's thread, with the unfinished file.
    std::function<void(const QString &output)> halfway = [](const QString &) {};

  private:
    struct Session : media::ExportSession {
        Session(FakeSessions &sessions, QString path, media::ExportPreset chosen)
            : owner(sessions), asset(std::move(path)), preset(chosen) {}

        void run(const QString &path, std::optional<media::MediaTimeRange> range,
                 std::stop_token stop) override {
            QFile from(asset);
            QFile into(path);
            EXPECT_TRUE(from.open(QIODevice::ReadOnly));
            EXPECT_TRUE(
                into.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::ExistingOnly));
            into.write("half");
            into.flush();
            owner.halfway(QFile::symLinkTarget(path)); // of an open file
            if (stop.stop_requested()) {
                throw Cancelled();
            }
            into.resize(0);
            into.seek(0);
            into.write(output(preset, from.readAll(), range));
        }
        double progress() const override { return 0.5; }

        FakeSessions &owner;
        QString asset;
        media::ExportPreset preset;
    };
};

} // namespace corvane::test
