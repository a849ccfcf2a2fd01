#pragma once

#include "platform/JSONRecord.h"

#include <chrono>

/// The advisory lock beside a project file. It shows other machines who has the project open, and
/// prevents no access. The functions access files on the calling thread.
namespace corvane::DocumentLock {

/// The session that has the project open. Stored in the lock's file.
struct Holder {
    QString host;
    QString user;
    QDateTime openedAt;
    QDateTime renewedAt;
    qint64 process = 0;
    QString session; ///< a UUID, the same while the project is open

    bool operator==(const Holder &) const = default;
};

/// The holder renews its lock this often.
constexpr std::chrono::minutes kRenewalInterval{2};
/// A lock that wasn't renewed for this long is stale: the holder crashed or lost its connection.
constexpr std::chrono::minutes kStaleAfter{10};

/// This process as the holder of a new lock.
Holder thisProcess(const QDateTime &now);

/// The path of the lock of a project file, beside the file that a link leads to.
QString pathFor(const QString &projectFile);

/// The holder of the lock if that is another session and the lock isn't stale; nullopt also if
/// there is no lock or it can't be read.
std::optional<Holder> otherHolder(const QString &projectFile, const QString &session,
                                  const QDateTime &now);
/// Writes the lock. A failure is ignored, as for a folder without write permission.
void write(const QString &projectFile, const Holder &holder);
/// Removes the lock if the session holds it.
void release(const QString &projectFile, const QString &session);

} // namespace corvane::DocumentLock

namespace corvane {

template <> struct JSONFields<DocumentLock::Holder> {
    using Holder = DocumentLock::Holder;
    static constexpr auto table = std::tuple(
        jsonField("host", &Holder::host), jsonField("user", &Holder::user),
        jsonField("openedAt", &Holder::openedAt), jsonField("renewedAt", &Holder::renewedAt),
        jsonField("process", &Holder::process), jsonField("session", &Holder::session));
};

} // namespace corvane
