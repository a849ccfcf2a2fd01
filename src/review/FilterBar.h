#pragma once

#include "review/list/ReviewState.h"

#include <QObject>
#include <QVariant>

namespace corvane {

/// The filter row above the list: owns the `ReviewState` and provides the texts and states of the
/// controls. Changes take effect immediately. Main thread only.
class FilterBar : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList chips READ chips NOTIFY stateChanged)
    Q_PROPERTY(QString ratingLabel READ ratingLabel NOTIFY stateChanged)
    Q_PROPERTY(bool ratingIsActive READ ratingIsActive NOTIFY stateChanged)
    Q_PROPERTY(QVariantList ratingItems READ ratingItems NOTIFY stateChanged)
    Q_PROPERTY(QString searchQuery READ searchQuery WRITE setSearchQuery NOTIFY stateChanged)
    Q_PROPERTY(QString sortLabel READ sortLabel NOTIFY stateChanged)
    Q_PROPERTY(QVariantList sortItems READ sortItems NOTIFY stateChanged)
    Q_PROPERTY(bool useLargeThumbnails READ useLargeThumbnails WRITE setUseLargeThumbnails NOTIFY
                   stateChanged)
    Q_PROPERTY(QString countLabel READ countLabel NOTIFY countsChanged)
    Q_PROPERTY(bool hasBulkActions READ hasBulkActions NOTIFY countsChanged)

  public:
    enum class Chip { all, unreviewed, favorites, selected, subclips, showRejects };
    Q_ENUM(Chip)

    using QObject::QObject;

    static QString label(ReviewState::Sort sort);
    static QString label(const ReviewState::RatingFilter &filter);

    const ReviewState &state() const { return m_state; }
    void setState(const ReviewState &state);
    /// Sets the counts to display. Called when the list changed.
    void setCounts(qsizetype visible, qsizetype total);

    /// Maps with "chip", "title" and "isActive".
    QVariantList chips() const;
    /// "All" clears every filter; each other chip toggles its own.
    Q_INVOKABLE void click(corvane::FilterBar::Chip chip);
    Q_INVOKABLE void clearFilters() { click(Chip::all); }

    QString ratingLabel() const { return label(m_state.ratingFilter); }
    bool ratingIsActive() const;
    /// Maps with "title", "isCurrent" and "isDivider".
    QVariantList ratingItems() const;
    /// `item` is an index in `ratingItems`. Ignores the divider.
    Q_INVOKABLE void chooseRating(int item);

    const QString &searchQuery() const { return m_state.searchQuery; }
    void setSearchQuery(const QString &text) { set(&ReviewState::searchQuery, text); }

    QString sortLabel() const;
    /// Maps with "title" and "isCurrent".
    QVariantList sortItems() const;
    Q_INVOKABLE void chooseSort(int item);

    bool useLargeThumbnails() const { return m_state.useLargeThumbnails; }
    void setUseLargeThumbnails(bool use) { set(&ReviewState::useLargeThumbnails, use); }

    QString countLabel() const;
    /// True if "Add to Selects" and "Remove from Selects" are shown: the list isn't empty.
    bool hasBulkActions() const { return m_visible > 0; }

  Q_SIGNALS:
    void stateChanged();
    void countsChanged();

  private:
    /// Sets one field of the state.
    template <class Value> void set(Value ReviewState::*field, const Value &value) {
        ReviewState state = m_state;
        state.*field = value;
        setState(state);
    }
    void publishCounts();

    ReviewState m_state;
    qsizetype m_visible = 0;
    qsizetype m_total = 0;
    /// As last published. The label depends on the filter, too.
    std::pair<QString, bool> m_publishedCounts{countLabel(), false};
};

} // namespace corvane
