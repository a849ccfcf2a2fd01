#include "review/ClipInspector.h"

#include "platform/TextFormat.h"
#include "review/list/ReviewFormats.h"

namespace corvane {

namespace {

constexpr int kMaxWordLength = 2000;

struct Flag {
    const char *title;
    const char *icon;
    const char *shortcut;
    bool VideoRecord::*isOn;
    void (ProjectStore::*toggle)(const QString &videoId);
};

constexpr Flag kFlags[] = {
    {"Favorite", "heart.fill", "F", &VideoRecord::favorite, &ProjectStore::toggleFavorite},
    {"Selected", "checkmark.circle.fill", "S", &VideoRecord::selectedForExport,
     &ProjectStore::toggleSelectedForExport},
    {"Reviewed", "eye.fill", "R", &VideoRecord::reviewed, &ProjectStore::toggleReviewed},
    {"Rejected", "xmark.circle.fill", "X", &VideoRecord::rejected, &ProjectStore::toggleRejected},
};

} // namespace

ClipInspector::ClipInspector(ProjectStore &store, QObject *parent)
    : QObject(parent), m_store(store) {}

void ClipInspector::setVideo(const std::optional<VideoItem> &video) {
    const bool isAnother = !m_video || !video || (*m_video)->id != (*video)->id;
    const bool isSame = m_video && video ? m_video->isSharedWith(*video) : m_video == video;
    if (isSame) {
        return;
    }
    const QString notesBefore = notes();
    m_video = video;
    m_tags.setRows(tags());
    Q_EMIT changed();
    if (isAnother || notes() != notesBefore) {
        Q_EMIT notesChanged();
    }
    if (isAnother) {
        setNewTag({});
    }
}

QStringList ClipInspector::tags() const {
    return m_video ? (*m_video)->tags : QStringList();
}

QString ClipInspector::title() const {
    return m_video ? inOneLine((*m_video)->fileName) : QString();
}

QStringList ClipInspector::facts() const {
    if (!m_video) {
        return {};
    }
    const VideoRecord &video = **m_video;
    QStringList facts;
    if (video.codec) {
        facts.append(*video.codec);
    }
    if (video.width && video.height) {
        facts.append(QStringLiteral("%1×%2").arg(*video.width).arg(*video.height));
    }
    if (video.fps) {
        facts.append(QString::number(*video.fps, 'f', 2) + QStringLiteral("fps"));
    }
    if (video.durationSeconds != 0) { // 0 if unknown
        facts.append(formattedDuration(video.durationSeconds));
    }
    return facts;
}

int ClipInspector::rating() const {
    return m_video ? (*m_video)->rating : 0;
}

QVariantList ClipInspector::flags() const {
    QVariantList flags;
    for (const Flag &flag : kFlags) {
        const QString title = QString::fromUtf8(flag.title);
        const QString shortcut = QString::fromUtf8(flag.shortcut);
        flags.append(
            QVariantMap{{QStringLiteral("title"), title},
                        {QStringLiteral("icon"), QString::fromUtf8(flag.icon)},
                        {QStringLiteral("shortcut"), shortcut},
                        {QStringLiteral("help"), QStringLiteral("%1 (%2)").arg(title, shortcut)},
                        {QStringLiteral("isOn"), m_video && (**m_video).*flag.isOn}});
    }
    return flags;
}

QString ClipInspector::notes() const {
    return m_video ? (*m_video)->notes.value_or(QString()) : QString();
}

bool ClipInspector::notesBreakInWords() const {
    qsizetype length = 0;
    for (const QChar letter : notes()) {
        length = letter.isSpace() ? 0 : length + 1;
        if (length > kMaxWordLength) {
            return true;
        }
    }
    return false;
}

QString ClipInspector::source() const {
    if (!m_video) {
        return {};
    }
    return (*m_video)->sourceImportMode == SourceImportMode::copied ? QStringLiteral("Copied")
                                                                    : QStringLiteral("In place");
}

void ClipInspector::setNewTag(const QString &text) {
    if (std::exchange(m_newTag, text) != text) {
        Q_EMIT newTagChanged();
    }
}

void ClipInspector::setRating(int rating) {
    if (m_video) {
        m_store.setRating((*m_video)->id, rating);
    }
}

void ClipInspector::toggleFlag(int flag) {
    if (m_video && flag >= 0 && size_t(flag) < std::size(kFlags)) {
        (m_store.*kFlags[flag].toggle)((*m_video)->id);
    }
}

void ClipInspector::setNotes(const QString &text) {
    if (m_video && text != notes()) {
        m_store.setNotes((*m_video)->id, text);
    }
}

void ClipInspector::addTag() {
    const QString tag = m_newTag.trimmed();
    if (m_video && !tag.isEmpty()) {
        m_store.addTag((*m_video)->id, tag);
        setNewTag({});
    }
}

void ClipInspector::removeTag(const QString &tag) {
    if (m_video) {
        m_store.removeTag((*m_video)->id, tag);
    }
}

} // namespace corvane
