#include "platform/ISODate.h"

#include <QTimeZone>

#include <charconv>
#include <chrono>

namespace corvane::isoDate {

namespace {

using namespace std::chrono;

void writeDigits(char *into, int count, int value) {
    for (int i = count - 1; i >= 0; --i, value /= 10) {
        into[i] = char('0' + value % 10);
    }
}

/// Takes texts apart from the front; once anything is wrong it stays wrong.
class Scanner {
  public:
    explicit Scanner(QByteArrayView text) : m_at(text.begin()), m_end(text.end()) {}

    int digits(int count) {
        int value = 0;
        if (m_end - m_at < count) {
            m_good = false;
            return 0;
        }
        for (const char *const stop = m_at + count; m_at != stop; ++m_at) {
            m_good = m_good && *m_at >= '0' && *m_at <= '9';
            value = value * 10 + (*m_at - '0');
        }
        return value;
    }
    bool take(char wanted) {
        const bool found = m_at != m_end && *m_at == wanted;
        m_at += found ? 1 : 0;
        return found;
    }
    void expect(char wanted) { m_good = take(wanted) && m_good; }
    /// The digits behind the point, as milliseconds.
    int fraction() {
        int value = 0;
        int count = 0;
        for (; m_at != m_end && *m_at >= '0' && *m_at <= '9'; ++m_at, ++count) {
            value = count < 3 ? value * 10 + (*m_at - '0') : value;
        }
        m_good = m_good && count > 0;
        for (; count < 3; ++count) {
            value *= 10;
        }
        return value;
    }
    minutes zone() {
        if (take('Z')) {
            return minutes(0);
        }
        const bool isEast = take('+');
        if (!isEast) {
            expect('-');
        }
        const hours wholeHours(digits(2));
        take(':');
        const minutes offset = wholeHours + minutes(digits(2));
        return isEast ? offset : -offset;
    }
    bool isDone() const { return m_good && m_at == m_end; }

  private:
    const char *m_at;
    const char *m_end;
    bool m_good = true;
};

} // namespace

void write(const QDateTime &date, char *into) {
    const sys_time<milliseconds> time{milliseconds(date.toMSecsSinceEpoch())};
    const auto day = floor<days>(time);
    const year_month_day ymd(day);
    const hh_mm_ss clock(time - day);
    writeDigits(into, 4, int(ymd.year()));
    into[4] = '-';
    writeDigits(into + 5, 2, int(unsigned(ymd.month())));
    into[7] = '-';
    writeDigits(into + 8, 2, int(unsigned(ymd.day())));
    into[10] = 'T';
    writeDigits(into + 11, 2, int(clock.hours().count()));
    into[13] = ':';
    writeDigits(into + 14, 2, int(clock.minutes().count()));
    into[16] = ':';
    writeDigits(into + 17, 2, int(clock.seconds().count()));
    into[19] = '.';
    writeDigits(into + 20, 3, int(clock.subseconds().count()));
    into[23] = 'Z';
}

QString toText(const QDateTime &date) {
    char text[kTextSize];
    write(date, text);
    return QString::fromLatin1(text, kTextSize);
}

std::optional<QDateTime> fromText(QByteArrayView text) {
    Scanner scan(text);
    const year y(scan.digits(4));
    scan.expect('-');
    const month m(unsigned(scan.digits(2)));
    scan.expect('-');
    const day d(unsigned(scan.digits(2)));
    scan.expect('T');
    const int h = scan.digits(2);
    scan.expect(':');
    const int min = scan.digits(2);
    scan.expect(':');
    const int s = scan.digits(2);
    const int ms = scan.take('.') ? scan.fraction() : 0;
    const minutes offset = scan.zone();
    const year_month_day date(y, m, d);
    if (!scan.isDone() || !date.ok() || h > 23 || min > 59 || s > 60) {
        return std::nullopt;
    }
    const sys_time<milliseconds> time =
        sys_days(date) + hours(h) + minutes(min) + seconds(s) + milliseconds(ms) - offset;
    // The offset can move a date out of the four-digit years, which the form couldn't write again.
    const int written = int(year_month_day(floor<days>(time)).year());
    if (written < 0 || written > 9999) {
        return std::nullopt;
    }
    return QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
}

} // namespace corvane::isoDate
