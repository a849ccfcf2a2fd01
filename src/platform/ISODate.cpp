#include "platform/ISODate.h"

#include <QTimeZone>

#include <chrono>

namespace corvane::isoDate {

namespace {

using namespace std::chrono;

void writeDigits(char *into, int count, int value) {
    for (int i = count - 1; i >= 0; --i, value /= 10) {
        into[i] = char('0' + value % 10);
    }
}

/// Reads the parts of a text in order. After a mismatch the values are meaningless and `isDone()`
/// stays false.
class Scanner {
  public:
    explicit Scanner(QByteArrayView text) : m_at(text.begin()), m_end(text.end()) {}

    int digits(int count) {
        int value = 0;
        if (m_end - m_at < count) {
            m_isValid = false;
            return 0;
        }
        for (const char *const stop = m_at + count; m_at != stop; ++m_at) {
            m_isValid = m_isValid && *m_at >= '0' && *m_at <= '9';
            value = value * 10 + (*m_at - '0');
        }
        return value;
    }
    bool skipIf(char c) {
        const bool matches = m_at != m_end && *m_at == c;
        m_at += matches ? 1 : 0;
        return matches;
    }
    void expect(char c) { m_isValid = skipIf(c) && m_isValid; }
    /// The digits after the decimal point, in milliseconds.
    int fraction() {
        int value = 0;
        int count = 0;
        for (; m_at != m_end && *m_at >= '0' && *m_at <= '9'; ++m_at, ++count) {
            value = count < 3 ? value * 10 + (*m_at - '0') : value;
        }
        m_isValid = m_isValid && count > 0;
        for (; count < 3; ++count) {
            value *= 10;
        }
        return value;
    }
    minutes zone() {
        if (skipIf('Z')) {
            return minutes(0);
        }
        const bool isEast = skipIf('+');
        if (!isEast) {
            expect('-');
        }
        const hours offsetHours(digits(2));
        skipIf(':');
        const minutes offset = offsetHours + minutes(digits(2));
        return isEast ? offset : -offset;
    }
    bool isDone() const { return m_isValid && m_at == m_end; }

  private:
    const char *m_at;
    const char *m_end;
    bool m_isValid = true;
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
    const int ms = scan.skipIf('.') ? scan.fraction() : 0;
    const minutes offset = scan.zone();
    const year_month_day date(y, m, d);
    if (!scan.isDone() || !date.ok() || h > 23 || min > 59 || s > 60) {
        return std::nullopt;
    }
    const sys_time<milliseconds> time =
        sys_days(date) + hours(h) + minutes(min) + seconds(s) + milliseconds(ms) - offset;
    // The offset can move a date out of the years 0 to 9999, which `write` couldn't write.
    const int utcYear = int(year_month_day(floor<days>(time)).year());
    if (utcYear < 0 || utcYear > 9999) {
        return std::nullopt;
    }
    return QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
}

} // namespace corvane::isoDate
