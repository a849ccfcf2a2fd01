#pragma once

#include "session/ProjectStore.h"

#include <QStringListModel>
#include <QVariant>

namespace corvane {

/// One clip's facts, and the edits that a review makes of them. It shows the clip as the store has
/// it and keeps nothing of its own but the tag that is being typed. Main thread.
class ClipInspector : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool hasClip READ hasClip NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QStringList facts READ facts NOTIFY changed)
    Q_PROPERTY(int rating READ rating NOTIFY changed)
    Q_PROPERTY(QVariantList flags READ flags NOTIFY changed)
    Q_PROPERTY(QString notes READ notes WRITE setNotes NOTIFY notesChanged)
    Q_PROPERTY(bool notesBreakInWords READ notesBreakInWords NOTIFY notesChanged)
    Q_PROPERTY(QAbstractItemModel *tags READ tagModel CONSTANT)
    Q_PROPERTY(QString source READ source NOTIFY changed)
    Q_PROPERTY(QString newTag READ newTag WRITE setNewTag NOTIFY newTagChanged)

  public:
    /// The store must outlive it.
    explicit ClipInspector(ProjectStore &store, QObject *parent = nullptr);

    /// Another clip is shown, or none, or the same one was changed.
    void setVideo(const std::optional<VideoItem> &video);

    bool hasClip() const { return m_video.has_value(); }
    QString title() const;
    /// Codec, size, frame rate and duration, each only where it is known.
    QStringList facts() const;
    int rating() const;
    /// Maps with "title", "icon", "shortcut", "help" and "isOn".
    QVariantList flags() const;
    QString notes() const;
    /// Whether a word of the notes is so long that it has to be broken wherever a line is full: the
    /// search for its end in each of its lines would stop the screen.
    bool notesBreakInWords() const;
    QStringList tags() const { return m_tags.stringList(); }
    /// The tags as rows that stay while others come and go.
    QAbstractItemModel *tagModel() { return &m_tags; }
    /// "In place" or "Copied".
    QString source() const;
    const QString &newTag() const { return m_newTag; }
    void setNewTag(const QString &text);

    Q_INVOKABLE void setRating(int rating);
    /// By the flag's place in the list.
    Q_INVOKABLE void toggleFlag(int flag);
    void setNotes(const QString &text);
    /// Adds what was typed, trimmed, and empties the field; what is blank is left as it stands.
    Q_INVOKABLE void addTag();
    Q_INVOKABLE void removeTag(const QString &tag);

    /// "Rate 2 stars (2 key)".
    Q_INVOKABLE static QString starHelp(int star);

  Q_SIGNALS:
    void changed();
    /// Other notes are shown, or the same ones of another clip.
    void notesChanged();
    void newTagChanged();

  private:
    void setTags(const QStringList &tags);

    ProjectStore &m_store;
    std::optional<VideoItem> m_video;
    QStringListModel m_tags;
    QString m_newTag;
};

} // namespace corvane
