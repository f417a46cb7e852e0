// Exchanges the marks between the first and the last digit of a formatted number.
#include "platform/basic/LocalMarks.h"

#include "platform/basic/SystemLocale.h"

#include <algorithm>

namespace platform {

namespace {

/// What a locale writes between digits, kept for the next number: the locale itself looks them up each time.
struct Marks {
    QLocale locale = QLocale::c();
    QString point = locale.decimalPoint(), group = locale.groupSeparator();
};

const Marks& marksOf(const QLocale& locale) {
    thread_local Marks last;
    if (last.locale != locale)
        last = {locale, locale.decimalPoint(), locale.groupSeparator()};
    return last;
}

}  // namespace

QString withLocalMarks(const QString& formatted, const QLocale& locale) {
    const auto isMark = [](QChar c) { return c == u'.' || c == u','; };
    if (std::none_of(formatted.cbegin(), formatted.cend(), isMark))
        return formatted;
    const auto digit = [](QChar c) { return c.isDigit(); };
    const auto begin = std::find_if(formatted.cbegin(), formatted.cend(), digit);
    if (begin == formatted.cend())
        return formatted;
    const auto end = std::find_if(formatted.crbegin(), formatted.crend(), digit).base();
    const Marks& marks = marksOf(locale);
    QString result;
    result.reserve(formatted.size() * 2);
    result.append(formatted.cbegin(), begin - formatted.cbegin());
    if (begin != formatted.cbegin() && *(begin - 1) == u'.')
        result.replace(result.size() - 1, 1, marks.point);
    for (auto c = begin; c != end; ++c) {
        if (*c == u'.')
            result += marks.point;
        else if (*c == u',')
            result += marks.group;
        else
            result += *c;
    }
    return result.append(end, formatted.cend() - end);
}

QString shownNumber(const QString& formatted) { return withLocalMarks(formatted, systemLocale()); }

}  // namespace platform
