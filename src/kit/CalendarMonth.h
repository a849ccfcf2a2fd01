#pragma once

#include <QDate>
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QVariant>

namespace corvane {

/// One month as a calendar shows it: six weeks of days, the chosen day among them. Days are ISO
/// texts
/// ("2025-06-13"). What isn't one leaves everything as it was. Main thread.
class CalendarMonth : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The chosen day; setting it turns to its month.
    Q_PROPERTY(QString date READ date WRITE setDate NOTIFY changed)
    /// "June 2025".
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// The two letters of each day of the week, in the order of the user's locale.
    Q_PROPERTY(QStringList weekdays READ weekdays CONSTANT)
    /// 42 objects {date, day, inMonth, chosen, name}.
    Q_PROPERTY(QVariantList days READ days NOTIFY changed)

  public:
    explicit CalendarMonth(QObject *parent = nullptr);

    [[nodiscard]] QString date() const;
    void setDate(const QString &date);
    [[nodiscard]] QString title() const;
    [[nodiscard]] QStringList weekdays() const;
    [[nodiscard]] QVariantList days() const;

    /// Moves the chosen day, and the month with it.
    Q_INVOKABLE void moveDays(int days);
    Q_INVOKABLE void moveMonths(int months);

    /// Turns the pages only.
    Q_INVOKABLE void turn(int months);

  Q_SIGNALS:
    void changed();

  private:
    void choose(QDate date);

    QDate m_date;
    QDate m_month; ///< The first day of the month that shows.
};

} // namespace corvane
