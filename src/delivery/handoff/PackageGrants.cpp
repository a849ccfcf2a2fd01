#include "delivery/handoff/PackageGrants.h"

#include "platform/Paths.h"
#include "trust/ContentHasher.h"

namespace corvane {

namespace {

/// nullopt if the file cannot be hashed. The registry then asks the user to confirm it.
QCoro::Task<std::optional<QString>> hashed(OpenFolder folder, QString name, std::stop_token stop) {
    co_return co_await utilityExecutor().run([folder, name, stop]() -> std::optional<QString> {
        try {
            return ContentHasher::makeAnchor(folder.anchoredPath(name), stop);
        } catch (const ContentHasher::HashError &) {
            return std::nullopt;
        } catch (const Cancelled &) {
            return std::nullopt;
        }
    });
}

} // namespace

PackageGrants::PackageGrants(MediaSourceAuthorization &authorization, std::stop_token stop)
    : m_authorization(authorization), m_stop(std::move(stop)) {}

void PackageGrants::add(const QString &file, const OpenFolder &folder,
                        const std::optional<QString> &anchor) {
    m_files.append(file);
    if (anchor) {
        m_anchors.insert(file, *anchor);
    } else {
        m_hashing.emplace_back(file, hashed(folder, paths::lastComponent(file), m_stop));
    }
}

QCoro::Task<> PackageGrants::grantAll(QString projectFile) {
    for (auto &[file, task] : m_hashing) {
        if (const auto anchor = co_await std::move(task)) {
            m_anchors.insert(file, *anchor);
        }
    }
    m_hashing.clear();
    co_await m_authorization.authorize(m_files, projectFile, m_anchors, {.stop = m_stop});
}

} // namespace corvane
