#pragma once

#include "session/MediaConfirmationBanner.h"

#include <QSet>
#include <QVariant>

namespace corvane {

/// The media confirmation banners of the open project. A banner that was closed is shown again when
/// the project is opened again. Main thread only. The store must outlive it.
class MediaBanners : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList banners READ banners NOTIFY changed)

  public:
    using Kind = MediaConfirmationBanner::Kind;

    explicit MediaBanners(ProjectStore &store, QObject *parent = nullptr);

    /// A map for each kind, the most serious last: "isShown", "icon", "message", "button",
    /// "disclosure", "paths", "isClosable", "isAnswering", "canCancel". While an answer reads
    /// files, the message shows its progress and the button cancels it.
    QVariantList banners() const;

    // `kind` is an index in `banners`.
    /// Runs the action of the banner's button. Until it finishes the banner stays, and another call
    /// cancels it if it has been reading files for a moment.
    Q_INVOKABLE void answer(int kind);
    Q_INVOKABLE void close(int kind);

  Q_SIGNALS:
    void changed();

  private:
    QCoro::Task<> runAnswer(Kind kind);
    void updateBanners();
    void reopenBanners();

    ProjectStore &m_store;
    QList<MediaConfirmationBanner> m_banners;
    QSet<int> m_closed;    ///< kinds
    QSet<int> m_answering; ///< kinds
};

} // namespace corvane
