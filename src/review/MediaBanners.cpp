#include "review/MediaBanners.h"

#include "platform/Tasks.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

constexpr int kBannerKinds = int(MediaConfirmationBanner::Kind::contentMismatch) + 1;

/// The banner of a kind, or nullptr.
const MediaConfirmationBanner *bannerOf(const QList<MediaConfirmationBanner> &banners, int kind) {
    const auto found =
        std::ranges::find(banners, MediaBanners::Kind(kind), &MediaConfirmationBanner::kind);
    return found == banners.end() ? nullptr : &*found;
}

} // namespace

MediaBanners::MediaBanners(ProjectStore &store, QObject *parent) : QObject(parent), m_store(store) {
    connect(&m_store, &ProjectStore::mediaConfirmationChanged, this, &MediaBanners::updateBanners);
    connect(&m_store, &ProjectStore::mediaProgressChanged, this, &MediaBanners::changed);
    connect(&m_store, &ProjectStore::projectOpened, this, &MediaBanners::reopenBanners);
    updateBanners();
}

QVariantList MediaBanners::banners() const {
    QVariantList banners;
    for (int kind = 0; kind < kBannerKinds; ++kind) {
        const MediaConfirmationBanner *found = bannerOf(m_banners, kind);
        MediaConfirmationBanner banner = found ? *found : MediaConfirmationBanner();
        const bool isAnswering = found && m_answering.contains(kind);
        const bool canCancel = isAnswering && m_store.mediaProgress();
        if (canCancel) {
            banner.message = QStringLiteral("Reading the files: ") + m_store.mediaProgress()->text;
            banner.button = QStringLiteral("Cancel");
        }
        banners.append(QVariantMap{{QStringLiteral("isShown"), found && !m_closed.contains(kind)},
                                   {QStringLiteral("icon"), banner.icon},
                                   {QStringLiteral("message"), banner.message},
                                   {QStringLiteral("button"), banner.button},
                                   {QStringLiteral("disclosure"), banner.disclosure},
                                   {QStringLiteral("paths"), banner.paths},
                                   {QStringLiteral("isClosable"), banner.isClosable},
                                   {QStringLiteral("isAnswering"), isAnswering},
                                   {QStringLiteral("canCancel"), canCancel}});
    }
    return banners;
}

void MediaBanners::answer(int kind) {
    if (m_answering.contains(kind)) {
        if (m_store.mediaProgress()) {
            m_store.cancelAnswers();
        }
    } else if (bannerOf(m_banners, kind)) {
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

void MediaBanners::reopenBanners() {
    if (!m_closed.isEmpty()) {
        m_closed.clear();
        Q_EMIT changed();
    }
}

} // namespace corvane
