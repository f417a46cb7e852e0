// How one locale writes a date and a time of day, and reading such texts.
#include "platform/basic/DateStyle.h"

#include "platform/basic/Text.h"

#include <algorithm>

namespace platform {
namespace {

/// Two-digit years: 00 to 29 belong to this century, 30 to 99 to the last.
int fullYear(int number, int width) {
    if (width > 2)
        return number;
    constexpr int firstOfLastCentury = 30;
    return number + (number < firstOfLastCentury ? 2000 : 1900);
}

QString plainBlanks(QString text) {
    for (QChar& mark : text) {
        if (mark.isSpace())
            mark = u' ';
    }
    return text;
}

}  // namespace

struct DateStyle::Scan {
    QList<int> numbers;
    QList<int> widths;          ///< digits of each number
    QStringList separators;     ///< before the first number, between them, behind the last
    enum class Half { none, am, pm } half = Half::none;
};

DateStyle::DateStyle(const QLocale& locale)
    : m_date(pieces(locale.dateFormat(QLocale::ShortFormat))),
      m_time(pieces(locale.timeFormat(QLocale::LongFormat))),
      m_am(plainBlanks(locale.amText())),
      m_pm(plainBlanks(locale.pmText())) {
    for (const Piece& piece : m_date) {
        if (piece.field != 0)
            m_order += QChar(piece.field);
    }
    m_dateSeparator = firstSeparator(m_date);
    m_timeSeparator = firstSeparator(m_time);
}

QList<DateStyle::Piece> DateStyle::pieces(const QString& pattern) {
    QList<Piece> result;
    const auto literal = [&](const QString& text) {
        if (!result.isEmpty() && result.last().field == 0)
            result.last().literal += text;
        else
            result.append({0, 0, text});
    };
    for (qsizetype at = 0; at < pattern.size();) {
        const QChar mark = pattern.at(at);
        if (mark == u'\'') {
            const qsizetype end = pattern.indexOf(u'\'', at + 1);
            literal(end == at + 1 ? QStringLiteral("'") : pattern.mid(at + 1, end - at - 1));
            at = end < 0 ? pattern.size() : end + 1;
            continue;
        }
        const bool half = (mark == u'A' || mark == u'a');
        qsizetype end = at + 1;
        while (end < pattern.size()
               && (pattern.at(end) == mark || (half && pattern.at(end).toLower() == u'p')))
            ++end;
        const int width = static_cast<int>(end - at);
        if (mark == u'y')
            result.append({u'y', 4, {}});
        else if (mark == u'd' || mark == u'M')
            result.append({mark.unicode(), std::min(width, 2), {}});
        else if (mark == u'H' || mark == u'h' || mark == u'm' || mark == u's')
            result.append({mark.unicode(), std::min(width, 2), {}});
        else if (half)
            result.append({u'a', 1, {}});
        else if (mark != u't')  // the zone: times of day here have none
            literal(plainBlanks(pattern.mid(at, width)));
        at = end;
    }
    // What stood around the zone only.
    while (!result.isEmpty() && result.last().field == 0
           && QStringLiteral(" ([)]").contains(result.last().literal.right(1))) {
        result.last().literal.chop(1);
        if (result.last().literal.isEmpty())
            result.removeLast();
    }
    return result;
}

QString DateStyle::firstSeparator(const QList<Piece>& pieces) {
    bool number = false;
    for (const Piece& piece : pieces) {
        if (piece.field != 0 && piece.field != u'a')
            number = true;
        else if (number && piece.field == 0)
            return trimmed(piece.literal);
    }
    return {};
}

QString DateStyle::joined(const QList<Piece>& pieces, QDate date, QTime time) const {
    const bool halves = std::any_of(pieces.begin(), pieces.end(),
                                    [](const Piece& piece) { return piece.field == u'a'; });
    QString text;
    for (const Piece& piece : pieces) {
        int number = 0;
        switch (piece.field) {
        case u'd': number = date.day(); break;
        case u'M': number = date.month(); break;
        case u'y': number = date.year(); break;
        case u'h':
        case u'H': number = halves && piece.field == u'h' ? (time.hour() + 11) % 12 + 1 : time.hour(); break;
        case u'm': number = time.minute(); break;
        case u's': number = time.second(); break;
        case u'a': text += time.hour() < 12 ? m_am : m_pm; continue;
        default: text += piece.literal; continue;
        }
        text += QString::number(number).rightJustified(piece.width, u'0');
    }
    return text;
}

QString DateStyle::dateText(QDate date) const { return joined(m_date, date, {}); }
QString DateStyle::timeText(QTime time) const { return joined(m_time, {}, time); }

bool DateStyle::takeHalf(const QString& word, Scan& scan) const {
    const auto is = [&](const QString& text) {
        return !text.isEmpty() && word.compare(text, Qt::CaseInsensitive) == 0;
    };
    if (scan.half != Scan::Half::none)
        return false;
    if (is(m_am) || is(QStringLiteral("AM")))
        scan.half = Scan::Half::am;
    else if (is(m_pm) || is(QStringLiteral("PM")))
        scan.half = Scan::Half::pm;
    return scan.half != Scan::Half::none;
}

bool DateStyle::isLiteral(const QString& word) const {
    const auto holds = [&](const Piece& piece) { return trimmed(piece.literal) == word; };
    return std::any_of(m_date.begin(), m_date.end(), holds) || std::any_of(m_time.begin(), m_time.end(), holds);
}

std::optional<DateStyle::Scan> DateStyle::scan(const QString& text) const {
    constexpr qsizetype longestNumber = 6;
    Scan result;
    const QString plain = trimmed(plainBlanks(text));
    const auto isDigit = [](QChar mark) { return mark >= u'0' && mark <= u'9'; };
    for (qsizetype at = 0; at <= plain.size();) {
        qsizetype end = at;
        while (end < plain.size() && !isDigit(plain.at(end)))
            ++end;
        QString between = trimmed(plain.mid(at, end - at));
        // The half of the day may stand before, between or behind the numbers.
        if (takeHalf(between, result))
            between.clear();
        const bool marks = between.isEmpty()
                           || (between.size() == 1 && QStringLiteral("/-.:,").contains(between));
        if (!marks && !isLiteral(between))
            return std::nullopt;
        result.separators += between;
        if (end == plain.size())
            break;
        at = end;
        while (end < plain.size() && isDigit(plain.at(end)))
            ++end;
        if (end - at > longestNumber)
            return std::nullopt;
        result.numbers += plain.mid(at, end - at).toInt();
        result.widths += static_cast<int>(end - at);
        at = end;
    }
    return result;
}

bool DateStyle::isTime(const Scan& scan) const {
    const QString& separator = scan.separators.at(1);
    if (separator == u":")
        return true;
    const bool longNumber = std::any_of(scan.numbers.begin(), scan.numbers.end(),
                                        [](int number) { return number > 99; });
    return separator == m_timeSeparator && !separator.isEmpty() && !longNumber;
}

QDate DateStyle::readDate(const Scan& scan) const {
    const QString& separator = scan.separators.at(1);
    if (separator.isEmpty() || separator == u":" || scan.separators.at(2) != separator)
        return {};
    const auto in = [&](const QString& order) {
        const qsizetype year = order.indexOf(u'y');
        return QDate(fullYear(scan.numbers.at(year), scan.widths.at(year)),
                     scan.numbers.at(order.indexOf(u'M')), scan.numbers.at(order.indexOf(u'd')));
    };
    if (scan.numbers.at(0) > 99)
        return in(QStringLiteral("yMd"));
    if (m_order.size() == 3 && separator == m_dateSeparator) {
        const QDate date = in(m_order);
        if (date.isValid())
            return date;
    }
    return in(QStringLiteral("Mdy"));
}

QTime DateStyle::readTime(const Scan& scan, qsizetype first) {
    int hour = scan.numbers.at(first);
    if (scan.half != Scan::Half::none) {
        if (hour > 12)
            return {};
        hour = hour % 12 + (scan.half == Scan::Half::pm ? 12 : 0);
    }
    const bool seconds = first + 2 < scan.numbers.size();
    return QTime(hour, scan.numbers.at(first + 1), seconds ? scan.numbers.at(first + 2) : 0);
}

std::optional<QDateTime> DateStyle::read(const QString& text) const {
    const auto found = scan(text);
    if (!found)
        return std::nullopt;
    const qsizetype count = found->numbers.size();
    QDate date(1899, 12, 30);
    QTime time(0, 0);
    if (count < 2 || count > 6 || count == 4)
        return std::nullopt;
    if (count <= 3 && isTime(*found)) {
        time = readTime(*found, 0);
    } else if (count >= 3) {
        if (count == 3 && found->half != Scan::Half::none)
            return std::nullopt;
        date = readDate(*found);
        if (count > 3)
            time = readTime(*found, 3);
    } else {
        return std::nullopt;
    }
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

}  // namespace platform
