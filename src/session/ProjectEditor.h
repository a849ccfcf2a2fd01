#pragma once

#include "document/Project.h"
#include "platform/Clock.h"
#include "session/SelectsCount.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <optional>

namespace corvane {

/// A subclip and the clip that contains it.
struct SubclipKey {
    QString videoId;
    QString subclipId;

    bool operator==(const SubclipKey &) const = default;
};

/// The open project in memory: the operations that edit it, and the undo history.
///
/// Every edit sets the project's `updatedAt`, marks the project as unsaved and emits
/// `projectChanged`, even if an id is unknown and nothing else changes. Without an open project an
/// edit is a no-op. Main thread only.
class ProjectEditor : public QObject {
    Q_OBJECT

  public:
    static constexpr qsizetype kUndoLimit = 50; ///< snapshots kept; the oldest is dropped first

    /// The open project; nullopt if no project is open.
    const std::optional<Project> &project() const { return m_project; }
    /// The clip with this id; nullptr if it is unknown or no project is open. Valid until the next
    /// edit. Linear in the number of clips, but constant within an `UndoBatch`.
    const VideoRecord *video(const QString &id) const;
    /// True if any clip or subclip is selected for export; false if no project is open. Reads only
    /// the clips edited since the last call.
    bool hasSelects() const;
    Clock &clock() { return m_clock; }

    /// Replaces the document as it is: without an undo step, and without setting `updatedAt`. No-op
    /// unless its id is the open project's.
    void updateProject(Project project);

    // Edits of a clip.
    /// Applies `change` without an undo step.
    void updateVideo(const QString &videoId, const std::function<void(VideoRecord &)> &change) {
        editVideo(Undoable::No, videoId, change);
    }
    void setRating(const QString &videoId, int rating); ///< clamped to 0...5
    void toggleFavorite(const QString &videoId);
    void toggleSelectedForExport(const QString &videoId);
    void toggleRejected(const QString &videoId);
    void toggleReviewed(const QString &videoId);
    void setNotes(const QString &videoId, const QString &text);
    void addTag(const QString &videoId, const QString &text);
    void removeTag(const QString &videoId, const QString &text);

    // Both return the number of clips changed.
    int selectClips(const QStringList &videoIds) { return setClipsSelected(videoIds, true); }
    int deselectClips(const QStringList &videoIds) { return setClipsSelected(videoIds, false); }

    // Edits of subclips.
    /// Returns the new subclip's id, or an empty string if the clip is unknown.
    QString addSubclip(const QString &videoId, double inSeconds, double outSeconds);
    void renameSubclip(const SubclipKey &key, const std::optional<QString> &text);
    void setSubclipRating(const SubclipKey &key, int rating); ///< clamped to 0...5
    void toggleSubclipFavorite(const SubclipKey &key);
    void toggleSubclipSelected(const SubclipKey &key);
    // Both return the number of subclips changed.
    int selectSubclips(const QList<SubclipKey> &keys) { return setSubclipsSelected(keys, true); }
    int deselectSubclips(const QList<SubclipKey> &keys) { return setSubclipsSelected(keys, false); }
    void deleteSubclip(const SubclipKey &key) { deleteSubclips({key}); }
    void deleteSubclips(const QList<SubclipKey> &keys);

    // History.
    /// Adds a snapshot of the project to the undo history and clears the redo history. No-op within
    /// a batch and during `undo` and `redo`.
    void pushUndoState();
    void undo() { replay(m_undoStack, m_redoStack); }
    void redo() { replay(m_redoStack, m_undoStack); }
    bool canUndo() const { return !m_undoStack.isEmpty(); }
    bool canRedo() const { return !m_redoStack.isEmpty(); }

    /// Groups the edits made during its lifetime into one undo step and one `projectChanged`.
    /// Batches nest: the outermost one counts. A batch must not live across a `co_await`.
    class UndoBatch {
      public:
        explicit UndoBatch(ProjectEditor &editor);
        ~UndoBatch();
        Q_DISABLE_COPY_MOVE(UndoBatch)

      private:
        ProjectEditor &m_editor;
        bool m_isNested;
    };

  Q_SIGNALS:
    void projectChanged();

  protected:
    ProjectEditor(Clock &clock, QObject *parent);

    /// Replaces or closes the project without emitting a signal. The history stays.
    void setProject(std::optional<Project> project);
    void clearHistory();
    /// Number of changes so far, which shows whether a finished save contains the latest one.
    quint64 revision() const { return m_revision; }
    /// Returns whether clips or subclips were removed on purpose since the last call, so that the
    /// next save may write fewer than the file contains.
    bool takeNextSaveAllowsDecrease() { return std::exchange(m_nextSaveAllowsDecrease, false); }
    /// For a removal that no save has written yet, as after a failed save.
    void setNextSaveAllowsDecrease() { m_nextSaveAllowsDecrease = true; }

  private:
    enum class Undoable { Yes, No };
    using ProjectChange = std::function<void(Project &)>;
    using VideoChange = std::function<void(VideoRecord &)>;
    using SubclipChange = std::function<void(VideoRecord &, Subclip &)>;

    /// Marks the project as unsaved. Called after each edit, before `projectChanged` is emitted.
    virtual void scheduleSave() = 0;

    void edit(Undoable undoable, const ProjectChange &change);
    void editVideo(Undoable undoable, const QString &id, const VideoChange &change);
    void editSubclip(Undoable undoable, const SubclipKey &key, const SubclipChange &change);
    int setClipsSelected(const QStringList &videoIds, bool isSelected);
    int setSubclipsSelected(const QList<SubclipKey> &keys, bool isSelected);
    void autoReview(VideoRecord &video) const;
    void publishEdit();
    qsizetype indexOfVideo(const QString &id) const;
    void replay(QList<Project> &from, QList<Project> &to);

    Clock &m_clock;
    std::optional<Project> m_project;
    quint64 m_revision = 0;
    bool m_nextSaveAllowsDecrease = false;
    QList<Project> m_undoStack; ///< newest last
    QList<Project> m_redoStack;
    bool m_inUndoBatch = false;
    bool m_isReplayingHistory = false;
    bool m_hasBatchEdits = false;
    mutable SelectsCount m_selects;                   ///< as of the last call of `hasSelects`
    mutable QHash<QString, qsizetype> m_batchIndexes; ///< by clip id; built on first use in a batch
};

} // namespace corvane
