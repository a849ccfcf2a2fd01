// Drawing up a range, saving it as a subclip, and playing it.

#include "review/PlayerReadiness.h"

#include "platform/TextFormat.h"
#include "review/list/ReviewFormats.h"
#include "review/ReviewScreenState.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

constexpr double kShortestSubclip = 0.1;
constexpr double kUnknownFrame = 1.0 / 30;

/// The range that the marks mean, whichever came first; nothing without a mark, or where the range
/// is too short to be meant.
std::optional<ClipRange> rangeOfDrafts(const std::optional<double> &in,
                                       const std::optional<double> &out, double end) {
    if (!in && !out) {
        return std::nullopt;
    }
    const ClipRange range = in && out ? ClipRange{std::min(*in, *out), std::max(*in, *out)}
                            : in      ? ClipRange{*in, end}
                                      : ClipRange{0, *out};
    if (!(range.durationSeconds() >= kShortestSubclip)) {
        return std::nullopt;
    }
    return range;
}

} // namespace

void ReviewScreenState::runMarking(const KeyMap::Command &command) {
    switch (command.action) {
    case KeyMap::Action::markIn:
        setDrafts(m_player.currentSeconds(), m_draftOut);
        break;
    case KeyMap::Action::markOut:
        setDrafts(m_draftIn, m_player.currentSeconds());
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
        exitSubclipMode();
        setDrafts({}, {});
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

void ReviewScreenState::setDrafts(std::optional<double> in, std::optional<double> out) {
    if (m_draftIn != in || m_draftOut != out) {
        m_draftIn = in;
        m_draftOut = out;
        publishChanges();
    }
}

/// One frame later, kept in the clip.
double ReviewScreenState::nudged(const std::optional<double> &draft) const {
    const double fps = m_player.framesPerSecond();
    const double moved =
        draft.value_or(m_player.currentSeconds()) + (fps > 0 ? 1 / fps : kUnknownFrame);
    return std::max(std::min(moved, m_player.durationSeconds()), 0.0);
}

/// To the mark, or without one to the edge of the last subclip.
void ReviewScreenState::jump(const std::optional<double> &draft, double Subclip::*edge) {
    const VideoRecord *video = selectedVideo();
    if (draft) {
        m_player.seek(*draft);
    } else if (video && !video->subclips.isEmpty()) {
        const auto &indexed =
            m_list.reviewIndex().clip(m_list.reviewIndex().indexOfClip(video->id));
        m_player.seek(video->subclips.at(indexed.subclips.back().index).*edge);
    }
}

void ReviewScreenState::saveDraftSubclip() {
    const VideoRecord *video = selectedVideo();
    if (!video) {
        return;
    }
    const double end =
        video->durationSeconds > 0 ? video->durationSeconds : m_player.durationSeconds();
    const auto range = rangeOfDrafts(m_draftIn, m_draftOut, end);
    if (!range) {
        return;
    }
    const QString media = mediaPath(*video);
    const SubclipKey added{
        *m_selectedVideoId,
        m_store.addSubclip(*m_selectedVideoId, range->inSeconds, range->outSeconds)};
    const Subclip *saved = subclip(added);
    if (!saved) {
        return;
    }
    makeThumbnail(added, *saved, media);
    setDrafts({}, {});
}

/// The rows of the subclip are told when its picture is there: they look for a file but once.
void ReviewScreenState::makeThumbnail(const SubclipKey &key, const Subclip &subclip,
                                      const QString &media) {
    setThumbnailPending(key, true);
    SubclipThumbnails::generateDetached(subclip, media, projectFolderPath(),
                                        m_services.subclipThumbnail, [self = QPointer(this), key] {
                                            if (self) {
                                                self->setThumbnailPending(key, false);
                                            }
                                        });
}

void ReviewScreenState::setThumbnailPending(const SubclipKey &key, bool isPending) {
    m_list.setThumbnailPending(key, isPending);
    m_subclips.setThumbnailPending(key.subclipId, isPending);
}

void ReviewScreenState::selectSubclip(const QString &videoId, const QString &subclipId) {
    const SubclipKey key{videoId, subclipId};
    const Subclip *selected = subclip(key);
    const SidebarRowId row{videoId, subclipId};
    if (m_lastRow != row) {
        m_lastRow = row;
        m_lastPlace.reset();
    }
    if (selected && m_selectedVideoId == videoId) {
        setKeyboardFocused(true);
        activateSubclip(*selected);
        seekInOnceReady(key, selected->inSeconds);
    } else if (selected) {
        selectClip(videoId);
        // A later selection doesn't end the wait.
        PlayerReadiness::whenReady(
            m_player, m_store.clock(),
            [this, key] {
                if (const Subclip *waiting = this->subclip(key)) {
                    activateSubclip(*waiting);
                }
            },
            this);
    }
}

/// A clip whose length isn't known yet takes every seek to its beginning.
void ReviewScreenState::seekInOnceReady(const SubclipKey &key, double in) {
    if (m_player.isReady()) {
        return;
    }
    const auto seekIn = [this, key, in] {
        if (m_selectedVideoId == key.videoId && m_activeSubclipId == key.subclipId) {
            m_player.seek(in);
        }
    };
    PlayerReadiness::whenReady(m_player, m_store.clock(), seekIn, this);
}

/// A range that is still armed would keep the seek inside it, so it goes first.
void ReviewScreenState::activateSubclip(const Subclip &subclip) {
    const double in = subclip.inSeconds;
    const double out = subclip.outSeconds;
    m_activeSubclipId = subclip.id;
    m_player.clearPlaybackConstraint();
    m_player.seek(in);
    m_player.playConstrained(in, out);
    publishSelection();
}

void ReviewScreenState::exitSubclipMode() {
    if (m_activeSubclipId) {
        leaveSubclip();
        publishSelection();
    }
}

void ReviewScreenState::leaveSubclip() {
    if (m_activeSubclipId) {
        m_activeSubclipId.reset();
        m_player.clearPlaybackConstraint();
    }
}

const Subclip *ReviewScreenState::subclip(const SubclipKey &key) const {
    const VideoRecord *video = m_list.video(key.videoId);
    const auto found = video ? std::ranges::find(video->subclips, key.subclipId, &Subclip::id)
                             : QList<Subclip>::const_iterator();
    return video && found != video->subclips.end() ? &*found : nullptr;
}

const Subclip *ReviewScreenState::activeSubclip() const {
    return m_activeSubclipId && m_selectedVideoId
               ? subclip({*m_selectedVideoId, *m_activeSubclipId})
               : nullptr;
}

QString ReviewScreenState::activeSubclipName() const {
    const Subclip *active = activeSubclip();
    return active ? inOneLine(ReviewFormats::displayName(*active)) : QString();
}

std::optional<SubclipKey> ReviewScreenState::ofSelectedClip(const QString &subclipId) const {
    const SubclipKey key{m_selectedVideoId.value_or(QString()), subclipId};
    return subclip(key) ? std::optional(key) : std::nullopt;
}

void ReviewScreenState::renameSubclip(const QString &subclipId, const QString &text) {
    if (const auto key = ofSelectedClip(subclipId)) {
        m_store.renameSubclip(*key, text);
    }
}

void ReviewScreenState::rateSubclip(const QString &subclipId, int rating) {
    if (const auto key = ofSelectedClip(subclipId)) {
        m_store.setSubclipRating(*key, rating);
    }
}

void ReviewScreenState::toggleSubclipFavorite(const QString &subclipId) {
    if (const auto key = ofSelectedClip(subclipId)) {
        m_store.toggleSubclipFavorite(*key);
    }
}

void ReviewScreenState::toggleSubclipSelected(const QString &subclipId) {
    if (const auto key = ofSelectedClip(subclipId)) {
        m_store.toggleSubclipSelected(*key);
    }
}

void ReviewScreenState::deleteSubclip(const QString &subclipId) {
    if (const auto key = ofSelectedClip(subclipId)) {
        if (m_activeSubclipId == subclipId) {
            leaveSubclip();
        }
        m_store.deleteSubclip(*key);
    }
}

} // namespace corvane
