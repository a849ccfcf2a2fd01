#include "session/ProjectPresence.h"

#include "platform/Tasks.h"

#include <QPointer>

namespace corvane {

namespace {

/// Takes or renews the lock, unless another session holds it; returns that holder.
std::optional<DocumentLock::Holder> lockOrFindHolder(const QString &file,
                                                     const DocumentLock::Holder &self) {
    auto other = DocumentLock::otherHolder(file, self.session, self.renewedAt);
    if (!other) {
        DocumentLock::write(file, self);
    }
    return other;
}

} // namespace

ProjectPresence::ProjectPresence(ProjectStore &store, QObject *parent)
    : QObject(parent), m_store(store) {
    connect(&m_store, &ProjectStore::fileURLChanged, this, &ProjectPresence::follow);
    follow();
}

ProjectPresence::~ProjectPresence() {
    release();
}

void ProjectPresence::follow() {
    const QString file = m_store.fileURL().value_or(QString());
    if (file == m_file) {
        return;
    }
    release();
    m_file = file;
    m_renewal.reset();
    setOtherHolder({});
    if (!m_file.isEmpty()) {
        m_self = DocumentLock::thisProcess(m_store.clock().now());
        detach(renew());
    }
}

void ProjectPresence::release() {
    if (!m_file.isEmpty()) {
        m_executor.post(
            [file = m_file, session = m_self.session] { DocumentLock::release(file, session); });
    }
}

QCoro::Task<> ProjectPresence::renew() {
    const QPointer self(this);
    m_self.renewedAt = m_store.clock().now();
    const QString session = m_self.session;
    auto other = co_await m_executor.run(
        [file = m_file, holder = m_self] { return lockOrFindHolder(file, holder); });
    if (!self || m_self.session != session || m_file.isEmpty()) {
        co_return;
    }
    setOtherHolder(std::move(other));
    m_renewal = m_store.clock().after(DocumentLock::kRenewalInterval, [this] { detach(renew()); });
}

void ProjectPresence::setOtherHolder(std::optional<DocumentLock::Holder> holder) {
    if (m_otherHolder != holder) {
        m_otherHolder = std::move(holder);
        Q_EMIT otherHolderChanged();
    }
}

} // namespace corvane
