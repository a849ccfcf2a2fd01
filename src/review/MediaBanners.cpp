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

QVariantMap nothingShown() {
    QVariantMap map = mapOf({});
    map.insert(QStringLiteral("isShown"), false);
    map.insert(QStringLiteral("isAnswering"), false);
    return map;
}

} // namespace

MediaBanners::MediaBanners(ProjectStore &store, QObject *parent)
    : QObject(parent), m_store(store), m_file(store.fileURL()) {
    connect(&m_store, &ProjectStore::mediaConfirmationChanged, this, &MediaBanners::follow);
    connect(&m_store, &ProjectStore::fileURLChanged, this, &MediaBanners::forgetProject);
    follow();
}

QVariantList MediaBanners::places() const {
    QVariantList places(kBannerKinds, nothingShown());
    for (const MediaConfirmationBanner &banner : m_banners) {
        const int place = int(banner.kind);
        QVariantMap map = mapOf(banner);
        map.insert(QStringLiteral("isShown"), !m_closed.contains(place));
        map.insert(QStringLiteral("isAnswering"), m_answering.contains(place));
        places[place] = map;
    }
    return places;
}

void MediaBanners::answer(int place) {
    const auto isOfPlace = [place](const MediaConfirmationBanner &banner) {
        return int(banner.kind) == place;
    };
    if (!m_answering.contains(place) && std::ranges::any_of(m_banners, isOfPlace)) {
        detach(carryOut(Kind(place)));
    }
}

QCoro::Task<> MediaBanners::carryOut(Kind kind) {
    const QPointer self(this);
    m_answering.insert(int(kind));
    Q_EMIT changed();
    co_await answerBanner(m_store, kind);
    if (self) {
        m_answering.remove(int(kind));
        Q_EMIT changed();
    }
}

void MediaBanners::close(int place) {
    if (!m_closed.contains(place)) {
        m_closed.insert(place);
        Q_EMIT changed();
    }
}

void MediaBanners::follow() {
    m_banners = mediaConfirmationBanners(m_store.mediaConfirmation());
    Q_EMIT changed();
}

/// What was hidden of one project is not hidden of the next, nor of the same one opened again.
void MediaBanners::forgetProject() {
    if (std::exchange(m_file, m_store.fileURL()) != m_store.fileURL() && !m_closed.isEmpty()) {
        m_closed.clear();
        Q_EMIT changed();
    }
}

} // namespace corvane
