#include "review/MediaBanners.h"

#include "platform/Tasks.h"

#include <QPointer>

namespace corvane {

namespace {

constexpr int kBannerKinds = int(MediaConfirmationBanner::Kind::contentMismatch) + 1;

QVariantMap mapOf(const MediaConfirmationBanner &banner) {
    return {{QStringLiteral("icon"), banner.icon},
            {QStringLiteral("message"), banner.message},
            {QStringLiteral("button"), banner.button},
            {QStringLiteral("disclosure"), banner.disclosure},
            {QStringLiteral("paths"), banner.paths},
            {QStringLiteral("isClosable"), banner.isClosable}};
}

QVariantMap hiddenBanner() {
    QVariantMap map = mapOf({});
    map.insert(QStringLiteral("isShown"), false);
    map.insert(QStringLiteral("isAnswering"), false);
    return map;
}

} // namespace

MediaBanners::MediaBanners(ProjectStore &store, QObject *parent)
    : QObject(parent), m_store(store), m_projectFile(store.fileURL()) {
    connect(&m_store, &ProjectStore::mediaConfirmationChanged, this, &MediaBanners::updateBanners);
    connect(&m_store, &ProjectStore::fileURLChanged, this, &MediaBanners::updateProject);
    updateBanners();
}

QVariantList MediaBanners::banners() const {
    QVariantList banners(kBannerKinds, hiddenBanner());
    for (const MediaConfirmationBanner &banner : m_banners) {
        const int kind = int(banner.kind);
        QVariantMap map = mapOf(banner);
        map.insert(QStringLiteral("isShown"), !m_closed.contains(kind));
        map.insert(QStringLiteral("isAnswering"), m_answering.contains(kind));
        banners[kind] = map;
    }
    return banners;
}

void MediaBanners::answer(int kind) {
    const auto isOfKind = [kind](const MediaConfirmationBanner &banner) {
        return int(banner.kind) == kind;
    };
    if (!m_answering.contains(kind) && std::ranges::any_of(m_banners, isOfKind)) {
        detach(runAnswer(Kind(kind)));
    }
}

QCoro::Task<> MediaBanners::runAnswer(Kind kind) {
    const QPointer self(this);
    m_answering.insert(int(kind));
    Q_EMIT changed();
    co_await answerBanner(m_store, kind);
    if (self) {
        m_answering.remove(int(kind));
        Q_EMIT changed();
    }
}

void MediaBanners::close(int kind) {
    if (!m_closed.contains(kind)) {
        m_closed.insert(kind);
        Q_EMIT changed();
    }
}

void MediaBanners::updateBanners() {
    m_banners = mediaConfirmationBanners(m_store.mediaConfirmation());
    Q_EMIT changed();
}

void MediaBanners::updateProject() {
    if (std::exchange(m_projectFile, m_store.fileURL()) != m_store.fileURL() &&
        !m_closed.isEmpty()) {
        m_closed.clear();
        Q_EMIT changed();
    }
}

} // namespace corvane
