#include "kit/CalendarMonth.h"

#include <QLocale>

namespace corvane {

namespace {

constexpr int daysShown = 42;

QDate firstOf(QDate date) {
    return {date.year(), date.month(), 1};
}

QLocale wording() {
    return QLocale(QLocale::English);
}

} // namespace

CalendarMonth::CalendarMonth(QObject *parent) : QObject(parent) {
    choose(QDate::currentDate());
}

QString CalendarMonth::date() const {
    return m_date.toString(Qt::ISODate);
}

void CalendarMonth::setDate(const QString &date) {
    choose(QDate::fromString(date, Qt::ISODate));
}

QString CalendarMonth::title() const {
    return wording().toString(m_month, QStringLiteral("MMMM yyyy"));
}

QStringList CalendarMonth::weekdays() const {
    QStringList names;
    const int first = QLocale().firstDayOfWeek();
    for (int i = 0; i < 7; ++i) {
        names.append(wording().dayName((first - 1 + i) % 7 + 1, QLocale::ShortFormat).left(2));
    }
    return names;
}

QVariantList CalendarMonth::days() const {
    const int lead = (m_month.dayOfWeek() - int(QLocale().firstDayOfWeek()) + 7) % 7;
    QVariantList days;
    for (int i = 0; i < daysShown; ++i) {
        const QDate day = m_month.addDays(i - lead);
        days.append(QVariantMap{
            {QStringLiteral("date"), day.toString(Qt::ISODate)},
            {QStringLiteral("day"), day.day()},
            {QStringLiteral("inMonth"), day.month() == m_month.month()},
            {QStringLiteral("chosen"), day == m_date},
            {QStringLiteral("name"), wording().toString(day, QStringLiteral("d MMMM yyyy"))},
        });
    }
    return days;
}

void CalendarMonth::moveDays(int days) {
    choose(m_date.addDays(days));
}

void CalendarMonth::moveMonths(int months) {
    choose(m_date.addMonths(months));
}

void CalendarMonth::turn(int months) {
    m_month = m_month.addMonths(months);
    Q_EMIT changed();
}

void CalendarMonth::choose(QDate date) {
    if (!date.isValid() || (date == m_date && firstOf(date) == m_month)) {
        return;
    }
    m_date = date;
    m_month = firstOf(date);
    Q_EMIT changed();
}

} // namespace corvane
