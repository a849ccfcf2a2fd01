#pragma once

#include "session/MediaConfirmationBanner.h"

#include <QSet>
#include <QVariant>

namespace corvane {

/// The media confirmation banners of the open project as a screen shows them, one place for each
/// kind, and their answers. The store must outlive it. Main thread.
class MediaBanners : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList places READ places NOTIFY changed)

  public:
    using Kind = MediaConfirmationBanner::Kind;

    explicit MediaBanners(ProjectStore &store, QObject *parent = nullptr);

    /// A map for each kind, the most serious last: "isShown", "icon", "message", "button",
    /// "disclosure", "paths", "isClosable", "isAnswering".
    QVariantList places() const;

    /// What the button of the banner at that place does. While it is at work the banner stays and
    /// takes no other answer.
    Q_INVOKABLE void answer(int place);
    /// The cross: hides the banner until the project is opened again.
    Q_INVOKABLE void close(int place);

  Q_SIGNALS:
    void changed();

  private:
    QCoro::Task<> carryOut(Kind kind);
    void follow();
    void forgetProject();

    ProjectStore &m_store;
    QList<MediaConfirmationBanner> m_banners;
    std::optional<QString> m_file; ///< whose banners these are
    QSet<int> m_closed;
    QSet<int> m_answering;
};

} // namespace corvane
