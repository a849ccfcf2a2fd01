#pragma once

#include "lists/ListModel.h"
#include "session/ProjectStore.h"

#include <QVariant>

namespace corvane {

/// The inspector of a clip: shows the record, passes edits to the store, and holds the tag that is
/// being typed. Main thread only.
class ClipInspector : public QObject {
    Q_OBJECT
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

    /// Shows the current record of a clip; nullopt for no clip.
    void setVideo(const std::optional<VideoItem> &video);

    QString title() const;
    /// Codec, size, frame rate and duration, as far as known.
    QStringList facts() const;
    int rating() const;
    /// Maps with "title", "icon", "shortcut", "help" and "isOn".
    QVariantList flags() const;
    QString notes() const;
    /// True if a word of the notes is so long that it must be wrapped at any character: finding its
    /// end for every line would block the screen.
    bool notesBreakInWords() const;
    QStringList tags() const;
    QAbstractItemModel *tagModel() { return &m_tags; }
    /// "In place" or "Copied".
    QString source() const;
    const QString &newTag() const { return m_newTag; }
    void setNewTag(const QString &text);

    Q_INVOKABLE void setRating(int rating);
    /// `flag` is an index in `flags`.
    Q_INVOKABLE void toggleFlag(int flag);
    void setNotes(const QString &text);
    /// Adds the typed tag, trimmed, and clears it. A no-op if it is blank.
    Q_INVOKABLE void addTag();
    Q_INVOKABLE void removeTag(const QString &tag);

  Q_SIGNALS:
    void changed();
    void notesChanged(); ///< also if another clip has the same notes
    void newTagChanged();

  private:
    ProjectStore &m_store;
    std::optional<VideoItem> m_video;
    ListModel<QString, std::identity{}> m_tags{{{Qt::DisplayRole, "display", std::identity{}}}};
    QString m_newTag;
};

} // namespace corvane
