#include "delivery/handoff/PackageGrants.h"

#include "trust/ContentHasher.h"

namespace corvane {

namespace {

/// nullopt if the file cannot be hashed. The registry then asks the user to confirm it.
QCoro::Task<std::optional<QString>> hashed(QString file) {
    co_return co_await utilityExecutor().run([file]() -> std::optional<QString> {
        try {
            return ContentHasher::makeAnchor(file);
        } catch (const ContentHasher::HashError &) {
            return std::nullopt;
        }
    });
}

} // namespace

PackageGrants::PackageGrants(MediaSourceAuthorization &authorization)
    : m_authorization(authorization) {}

void PackageGrants::add(const QString &file, const std::optional<QString> &anchor) {
    m_files.append(file);
    if (anchor) {
        m_anchors.insert(file, *anchor);
    } else {
        m_hashing.emplace_back(file, hashed(file));
    }
}

QCoro::Task<> PackageGrants::grantAll(QString projectFile) {
    for (auto &[file, task] : m_hashing) {
        if (const auto anchor = co_await std::move(task)) {
            m_anchors.insert(file, *anchor);
        }
    }
    m_hashing.clear();
    co_await m_authorization.authorize(m_files, projectFile, m_anchors);
}

} // namespace corvane
