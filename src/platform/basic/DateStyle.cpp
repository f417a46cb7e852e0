// How one locale writes a date and a time of day, and reading such texts.
#include "platform/basic/DateStyle.h"

#include "platform/basic/Text.h"

#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

QString plainBlanks(QString text) {
    for (QChar& mark : text) {
        if (mark.isSpace())
            mark = u' ';
    }
    return text;
}

/// A pattern without its quoted words, such as the "h" that stands behind the time in some locales.
QString withoutWords(const QString& pattern) {
    QString fields;
    bool quoted = false;
    for (const QChar mark : pattern) {
        if (mark == u'\'')
            quoted = !quoted;
        else if (!quoted)
            fields += mark;
    }
    return fields;
}

bool isMark(const QString& text) { return text.size() == 1 && u"/-.:,"_s.contains(text); }

/// What stands between the first two fields of a pattern, when it is a plain mark; else the other one.
QString separatorIn(const QString& pattern, const QString& fields, const QString& otherwise) {
    qsizetype at = 0;
    while (at < pattern.size() && !fields.contains(pattern.at(at)))
        ++at;
    while (at < pattern.size() && fields.contains(pattern.at(at)))
        ++at;
    qsizetype end = at;
    while (end < pattern.size() && !fields.contains(pattern.at(end)))
        ++end;
    const QString separator = plainBlanks(pattern.mid(at, end - at));
    return isMark(trimmed(separator)) ? separator : otherwise;
}

/// A text that is put together from small pieces; a list has one for each of its rows.
class Pieces {
public:
    void add(QStringView piece) { m_marks.append(piece.utf16(), piece.size()); }
    void add(int number, int width) {
        std::array<char, 12> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        for (auto missing = width - (end - digits.data()); missing > 0; --missing)
            m_marks.append(u'0');
        for (const char* digit = digits.data(); digit != end; ++digit)
            m_marks.append(static_cast<char16_t>(*digit));
    }
    QString text() const {
        return QString(reinterpret_cast<const QChar*>(m_marks.constData()), m_marks.size());
    }

private:
    QVarLengthArray<char16_t, 48> m_marks;
};

}  // namespace

int fullYear(int number, int width) {
    if (width > 2)
        return number;
    constexpr int firstOfLastCentury = 30;
    return number + (number < firstOfLastCentury ? 2000 : 1900);
}

struct DateStyle::Scan {
    QList<int> numbers;
    QList<int> widths;       ///< digits of each number
    QStringList separators;  ///< before the first number, between them, behind the last
    enum class Half { none, am, pm } half = Half::none;
};

DateStyle::DateStyle(const QLocale& locale)
    : m_am(trimmed(plainBlanks(locale.amText()))), m_pm(trimmed(plainBlanks(locale.pmText()))) {
    learnDate(withoutWords(locale.dateFormat(QLocale::ShortFormat)));
    learnTime(withoutWords(locale.timeFormat(QLocale::LongFormat)));
}

void DateStyle::learnDate(const QString& pattern) {
    for (const QChar field : pattern) {
        if (field != u'd' && field != u'M' && field != u'y')
            continue;
        if (m_order.contains(field)) {
            const qsizetype index = m_order.indexOf(field);
            m_widths[index] = field == u'y' ? 4 : 2;
        } else {
            m_order += field;
            m_widths += field == u'y' ? 4 : 1;
        }
    }
    if (m_order.size() != 3) {
        m_order = u"Mdy"_s;
        m_widths = {1, 1, 4};
    }
    m_dateSeparator = separatorIn(pattern, u"dMy"_s, u"/"_s);
    m_dateEnd = pattern.endsWith(u'.') ? u"."_s : QString();
}

void DateStyle::learnTime(const QString& pattern) {
    const qsizetype hour = std::max(pattern.indexOf(u'H'), pattern.indexOf(u'h'));
    m_hourWidth = hour >= 0 && hour + 1 < pattern.size() && pattern.at(hour + 1) == pattern.at(hour) ? 2 : 1;
    const qsizetype half = pattern.indexOf(u'a', 0, Qt::CaseInsensitive);
    m_halves = half >= 0 && !m_am.isEmpty() && m_am != m_pm;
    m_halfInFront = m_halves && half < hour;
    m_timeSeparator = trimmed(separatorIn(pattern, u"Hhms"_s, u":"_s));
    // Two different marks between hour, minute and second: the text is written with the usual one.
    const QString second = separatorIn(pattern.mid(pattern.indexOf(u'm')), u"ms"_s, u":"_s);
    if (trimmed(second) != m_timeSeparator)
        m_timeSeparator = u":"_s;
}

QString DateStyle::dateText(QDate date) const {
    int year = 0, month = 0, day = 0;
    date.getDate(&year, &month, &day);
    Pieces text;
    for (qsizetype at = 0; at < m_order.size(); ++at) {
        const QChar field = m_order.at(at);
        if (at > 0)
            text.add(m_dateSeparator);
        text.add(field == u'd' ? day : field == u'M' ? month : year, m_widths.at(at));
    }
    text.add(m_dateEnd);
    return text.text();
}

QString DateStyle::timeText(QTime time) const { return timeOfDay(time, true); }

QString DateStyle::shortTimeText(QTime time) const { return timeOfDay(time, false); }

QString DateStyle::timeOfDay(QTime time, bool seconds) const {
    const QString& half = time.hour() < 12 ? m_am : m_pm;
    Pieces text;
    if (m_halves && m_halfInFront) {
        text.add(half);
        text.add(u" ");
    }
    text.add(m_halves ? (time.hour() + 11) % 12 + 1 : time.hour(), m_hourWidth);
    text.add(m_timeSeparator);
    text.add(time.minute(), 2);
    if (seconds) {
        text.add(m_timeSeparator);
        text.add(time.second(), 2);
    }
    if (m_halves && !m_halfInFront) {
        text.add(u" ");
        text.add(half);
    }
    return text.text();
}

bool DateStyle::takeHalf(const QString& word, Scan& scan) const {
    const auto is = [&](const QString& text) {
        return !text.isEmpty() && word.compare(text, Qt::CaseInsensitive) == 0;
    };
    if (scan.half != Scan::Half::none)
        return false;
    if (is(m_am) || is(u"AM"_s))
        scan.half = Scan::Half::am;
    else if (is(m_pm) || is(u"PM"_s))
        scan.half = Scan::Half::pm;
    return scan.half != Scan::Half::none;
}

/// A separator, a half of the day, or a separator and a half behind it.
bool DateStyle::takeBetween(const QString& between, Scan& scan) const {
    QString separator;
    QString rest = between;
    if (!takeHalf(rest, scan)) {
        if (isMark(rest.left(1))) {
            separator = rest.left(1);
            rest = trimmed(rest.mid(1));
        }
        if (!rest.isEmpty() && !takeHalf(rest, scan))
            return false;
    }
    scan.separators += separator;
    return true;
}

std::optional<DateStyle::Scan> DateStyle::scan(const QString& text) const {
    constexpr qsizetype longestNumber = 6;
    Scan result;
    const QString plain = trimmed(plainBlanks(text));
    const auto isDigit = [](QChar mark) { return mark >= u'0' && mark <= u'9'; };
    for (qsizetype at = 0;;) {
        qsizetype end = at;
        while (end < plain.size() && !isDigit(plain.at(end)))
            ++end;
        if (!takeBetween(trimmed(plain.mid(at, end - at)), result))
            return std::nullopt;
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
    const bool longNumber =
        std::any_of(scan.numbers.begin(), scan.numbers.end(), [](int number) { return number > 99; });
    return separator == m_timeSeparator && !longNumber;
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
        return in(u"yMd"_s);
    if (separator == trimmed(m_dateSeparator)) {
        const QDate date = in(m_order);
        if (date.isValid())
            return date;
    }
    return in(u"Mdy"_s);
}

QTime DateStyle::readTime(const Scan& scan, qsizetype first) const {
    const bool seconds = first + 2 < scan.numbers.size();
    for (qsizetype at = first + 1; at < scan.numbers.size(); ++at) {
        const QString& separator = scan.separators.at(at);
        if (separator != u":" && separator != m_timeSeparator)
            return {};
    }
    int hour = scan.numbers.at(first);
    if (scan.half != Scan::Half::none) {
        if (hour > 12)
            return {};
        hour = hour % 12 + (scan.half == Scan::Half::pm ? 12 : 0);
    }
    return QTime(hour, scan.numbers.at(first + 1), seconds ? scan.numbers.at(first + 2) : 0);
}

std::optional<QDateTime> DateStyle::read(const QString& text) const {
    const auto found = scan(text);
    if (!found || !found->separators.first().isEmpty())
        return std::nullopt;
    const QString& end = found->separators.last();
    const qsizetype count = found->numbers.size();
    QDate date(1899, 12, 30);
    QTime time(0, 0);
    if ((count == 2 || count == 3) && isTime(*found)) {
        time = readTime(*found, 0);
    } else if (count == 3 && found->half == Scan::Half::none) {
        date = readDate(*found);
    } else if (count == 5 || count == 6) {
        const QString& between = found->separators.at(3);
        if (!between.isEmpty() && between != u"," && between != m_dateEnd)
            return std::nullopt;
        date = readDate(*found);
        time = readTime(*found, 3);
    } else {
        return std::nullopt;
    }
    if (!date.isValid() || !time.isValid() || !(end.isEmpty() || end == m_dateEnd))
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

QDate DateStyle::readTypedDate(const Scan& scan, int pivot) const {
    const QString& separator = scan.separators.at(1);
    const bool isOne = separator == u"." || separator == u"-" || separator == u"/";
    if (!isOne || scan.separators.at(2) != separator)
        return {};
    const QString order = scan.widths.at(0) == 4 ? u"yMd"_s : m_order;
    const auto at = [&](QChar field) { return order.indexOf(field); };
    int year = scan.numbers.at(at(u'y'));
    const int width = scan.widths.at(at(u'y'));
    if (width == 2)
        year += pivot - pivot % 100 + (year < pivot % 100 ? 100 : 0);
    else if (width != 4)
        return {};
    if (scan.widths.at(at(u'M')) > 2 || scan.widths.at(at(u'd')) > 2)
        return {};
    return {year, scan.numbers.at(at(u'M')), scan.numbers.at(at(u'd'))};
}

std::optional<QDateTime> DateStyle::readTyped(const QString& text, int pivot) const {
    const auto found = scan(text);
    if (!found || !found->separators.first().isEmpty())
        return std::nullopt;
    const qsizetype count = found->numbers.size();
    const bool timed = count == 5 || count == 6;
    if (!timed && (count != 3 || found->half != Scan::Half::none))
        return std::nullopt;
    const auto isEnd = [&](const QString& mark) { return mark.isEmpty() || mark == m_dateEnd; };
    if (timed && found->separators.at(3) != u"," && !isEnd(found->separators.at(3)))
        return std::nullopt;
    const QDate date = readTypedDate(*found, pivot);
    const QTime time = timed ? readTime(*found, 3) : QTime(0, 0);
    if (!date.isValid() || !time.isValid() || !isEnd(found->separators.last()))
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

}  // namespace platform
