#include "review/ReviewMarking.h"

#include "media/MediaTime.h"
#include "review/ScrubberGeometry.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

/// A tenth of a second. In ticks, because the difference of two times in seconds rounds below it.
constexpr qint64 kMinSubclipTicks = media::MediaTime::kTimescale / 10;
constexpr double kDefaultFrameDuration = 1.0 / 30;

/// The range between the drafts in either order. A missing draft is the start or the end of the
/// clip. Returns nullopt without drafts or if the range is too short.
std::optional<ClipRange> rangeOfDrafts(const std::optional<double> &in,
                                       const std::optional<double> &out, double end) {
    if (!in && !out) {
        return std::nullopt;
    }
    const ClipRange range = in && out ? ClipRange{std::min(*in, *out), std::max(*in, *out)}
                            : in      ? ClipRange{*in, end}
                                      : ClipRange{0, *out};
    const auto ticks = media::MediaTimeRange::fromSeconds(range.inSeconds, range.outSeconds);
    return ticks.out.value - ticks.in.value < kMinSubclipTicks ? std::nullopt
                                                               : std::optional(range);
}

} // namespace

ReviewMarking::ReviewMarking(const Parts &parts, SubclipThumbnails::Writer thumbnailWriter)
    : m_parts(parts), m_thumbnailWriter(std::move(thumbnailWriter)) {
    connect(&parts.selection, &ReviewSelection::clipSelected, this, &ReviewMarking::clearDrafts);
    connect(&parts.transport, &ReviewTransport::durationsChanged, this, &ReviewMarking::publish);
}

void ReviewMarking::run(const KeyMap::Command &command) {
    switch (command.action) {
    case KeyMap::Action::markIn:
        setDrafts(m_parts.player.currentSeconds(), m_draftOut);
        break;
    case KeyMap::Action::markOut:
        setDrafts(m_draftIn, m_parts.player.currentSeconds());
        break;
    case KeyMap::Action::nudgeIn:
        setDrafts(nudged(m_draftIn), m_draftOut);
        break;
    case KeyMap::Action::nudgeOut:
        setDrafts(m_draftIn, nudged(m_draftOut));
        break;
    case KeyMap::Action::saveDraft:
        saveDraftSubclip();
        break;
    case KeyMap::Action::leaveSubclipMode:
        m_parts.selection.exitSubclipMode();
        clearDrafts();
        break;
    case KeyMap::Action::jumpToIn:
        jump(m_draftIn, &Subclip::inSeconds);
        break;
    case KeyMap::Action::jumpToOut:
        jump(m_draftOut, &Subclip::outSeconds);
        break;
    default:
        break;
    }
}

void ReviewMarking::setDrafts(std::optional<double> in, std::optional<double> out) {
    m_draftIn = in;
    m_draftOut = out;
    publish();
}

/// One frame later, clamped to the clip.
double ReviewMarking::nudged(const std::optional<double> &draft) const {
    const double fps = m_parts.player.fps();
    const double later = draft.value_or(m_parts.player.currentSeconds()) +
                         (fps > 0 ? 1 / fps : kDefaultFrameDuration);
    return std::max(std::min(later, m_parts.player.durationSeconds()), 0.0);
}

/// Seeks to the draft, or to the edge of the last subclip if there is no draft.
void ReviewMarking::jump(const std::optional<double> &draft, double Subclip::*edge) {
    const VideoRecord *video = m_parts.selection.selectedVideo();
    if (draft) {
        m_parts.player.seek(*draft);
    } else if (video && !video->subclips.isEmpty()) {
        const ReviewIndex &index = m_parts.list.reviewIndex();
        const ReviewIndex::IndexedClip &clip = index.clip(index.indexOfClip(video->id));
        m_parts.player.seek(video->subclips.at(clip.subclips.back().index).*edge);
    }
}

void ReviewMarking::saveDraftSubclip() {
    const VideoRecord *video = m_parts.selection.selectedVideo();
    if (!video) {
        return;
    }
    const double end =
        video->durationSeconds > 0 ? video->durationSeconds : m_parts.player.durationSeconds();
    const auto range = rangeOfDrafts(m_draftIn, m_draftOut, end);
    if (!range) {
        return;
    }
    const QString videoId = video->id;
    const QString media =
        resolvedAgainstProject(video->sourcePath, m_parts.store.fileURL().value_or(QString()));
    const SubclipKey key{videoId,
                         m_parts.store.addSubclip(videoId, range->inSeconds, range->outSeconds)};
    if (const Subclip *saved = m_parts.list.subclip(key)) {
        createThumbnail(key, *saved, media);
        clearDrafts();
    }
}

void ReviewMarking::createThumbnail(const SubclipKey &key, const Subclip &subclip,
                                    const QString &media) {
    setThumbnailPending(key, true);
    const auto &projectFile = m_parts.store.fileURL();
    SubclipThumbnails::generateDetached(subclip, media,
                                        projectFile ? projectFolder(*projectFile) : QString(),
                                        m_thumbnailWriter, [self = QPointer(this), key] {
                                            if (self) {
                                                self->setThumbnailPending(key, false);
                                            }
                                        });
}

void ReviewMarking::setThumbnailPending(const SubclipKey &key, bool isPending) {
    m_parts.list.setThumbnailPending(key, isPending);
    m_parts.subclips.setThumbnailPending(key.subclipId, isPending);
}

std::optional<double> ReviewMarking::shownDraftIn() const {
    return ScrubberGeometry::shownDraft(m_draftIn, m_parts.transport.activeRange());
}

std::optional<double> ReviewMarking::shownDraftOut() const {
    return ScrubberGeometry::shownDraft(m_draftOut, m_parts.transport.activeRange());
}

QVariant ReviewMarking::scrubberFraction(std::optional<double> seconds) const {
    const ReviewTransport &transport = m_parts.transport;
    return seconds && transport.showsPlayhead()
               ? QVariant(ScrubberGeometry::position(*seconds, transport.transportDuration()))
               : QVariant();
}

void ReviewMarking::publish() {
    const std::pair fractions(draftInFraction(), draftOutFraction());
    if (std::exchange(m_published, fractions) != fractions) {
        Q_EMIT draftsChanged();
    }
}

std::optional<SubclipKey> ReviewMarking::subclipKey(const QString &subclipId) const {
    const SubclipKey key{m_parts.selection.selectedVideoId().value_or(QString()), subclipId};
    return m_parts.list.subclip(key) ? std::optional(key) : std::nullopt;
}

void ReviewMarking::renameSubclip(const QString &subclipId, const QString &text) {
    if (const auto key = subclipKey(subclipId)) {
        m_parts.store.renameSubclip(*key, text);
    }
}

void ReviewMarking::rateSubclip(const QString &subclipId, int rating) {
    if (const auto key = subclipKey(subclipId)) {
        m_parts.store.setSubclipRating(*key, rating);
    }
}

void ReviewMarking::toggleSubclipFavorite(const QString &subclipId) {
    if (const auto key = subclipKey(subclipId)) {
        m_parts.store.toggleSubclipFavorite(*key);
    }
}

void ReviewMarking::toggleSubclipSelected(const QString &subclipId) {
    if (const auto key = subclipKey(subclipId)) {
        m_parts.store.toggleSubclipSelected(*key);
    }
}

void ReviewMarking::deleteSubclip(const QString &subclipId) {
    if (const auto key = subclipKey(subclipId)) {
        if (m_parts.selection.activeSubclipId() == subclipId) {
            m_parts.selection.exitSubclipMode();
        }
        m_parts.store.deleteSubclip(*key);
    }
}

} // namespace corvane
