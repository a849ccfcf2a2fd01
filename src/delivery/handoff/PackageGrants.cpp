#include "delivery/handoff/PackageGrants.h"

#include "trust/ContentHasher.h"

namespace corvane {

namespace {

/// nullopt if the file cannot be hashed. The registry then asks the user to confirm it.
QCoro::Task<std::optional<QString>> hashed(QString file, std::stop_token stop) {
    co_return co_await utilityExecutor().run([file, stop]() -> std::optional<QString> {
        try {
            return ContentHasher::makeAnchor(file, stop);
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

void PackageGrants::add(const QString &file, const std::optional<QString> &anchor) {
    m_files.append(file);
    if (anchor) {
        m_anchors.insert(file, *anchor);
    } else {
        m_hashing.emplace_back(file, hashed(file, m_stop));
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
