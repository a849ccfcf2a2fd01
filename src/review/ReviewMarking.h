#pragma once

#include "review/ReviewTransport.h"
#include "review/SubclipListModel.h"
#include "review/SubclipThumbnails.h"

namespace corvane {

/// Draft in and out marks, saving them as a subclip, and edits of the selected clip's subclips.
///
/// Selecting another clip clears the drafts. Times are seconds in the clip. Edits of a subclip that
/// the selected clip doesn't have are ignored.
///
/// Main thread only. The objects passed to the constructor must outlive it.
class ReviewMarking : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariant draftInFraction READ draftInFraction NOTIFY draftsChanged)
    Q_PROPERTY(QVariant draftOutFraction READ draftOutFraction NOTIFY draftsChanged)

  public:
    /// The objects that the marks depend on.
    struct Parts {
        ProjectStore &store;
        ReviewPlayer &player;
        ReviewSelection &selection;
        ReviewTransport &transport;
        ReviewListModel &list;
        SubclipListModel &subclips;
    };

    /// Without a writer subclips get no thumbnails.
    ReviewMarking(const Parts &parts, SubclipThumbnails::Writer thumbnailWriter);

    const std::optional<double> &draftIn() const { return m_draftIn; }
    const std::optional<double> &draftOut() const { return m_draftOut; }
    /// The marks as times of the transport; nullopt if not shown.
    std::optional<double> shownDraftIn() const;
    std::optional<double> shownDraftOut() const;
    /// The marks as positions on the scrubber, 0 to 1; invalid (undefined in QML) if not shown.
    QVariant draftInFraction() const { return scrubberFraction(shownDraftIn()); }
    QVariant draftOutFraction() const { return scrubberFraction(shownDraftOut()); }
    void clearDrafts() { setDrafts({}, {}); }

    /// Adds the marked range to the project as a subclip and clears the drafts. Keeps the drafts if
    /// the range is shorter than a tenth of a second.
    void saveDraftSubclip();
    Q_INVOKABLE void renameSubclip(const QString &subclipId, const QString &text);
    Q_INVOKABLE void rateSubclip(const QString &subclipId, int rating);
    Q_INVOKABLE void toggleSubclipFavorite(const QString &subclipId);
    Q_INVOKABLE void toggleSubclipSelected(const QString &subclipId);
    /// Deletes without confirmation. Leaves subclip mode if the subclip is active.
    Q_INVOKABLE void deleteSubclip(const QString &subclipId);
    /// Runs a command on the drafts. Ignores other commands.
    void run(const KeyMap::Command &command);

    /// Emits `draftsChanged` if a property differs from the last call.
    void publish();

  Q_SIGNALS:
    void draftsChanged();

  private:
    QVariant scrubberFraction(std::optional<double> seconds) const;
    void setDrafts(std::optional<double> in, std::optional<double> out);
    double nudged(const std::optional<double> &draft) const;
    void jump(const std::optional<double> &draft, double Subclip::*edge);
    void createThumbnail(const SubclipKey &key, const Subclip &subclip, const QString &media);
    void setThumbnailPending(const SubclipKey &key, bool isPending);
    std::optional<SubclipKey> subclipKey(const QString &subclipId) const;

    Parts m_parts;
    SubclipThumbnails::Writer m_thumbnailWriter;
    std::optional<double> m_draftIn;
    std::optional<double> m_draftOut;
    std::pair<QVariant, QVariant> m_published; ///< the fractions
};

} // namespace corvane
