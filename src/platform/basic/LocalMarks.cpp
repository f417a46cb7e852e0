// Exchanges the marks between the first and the last digit of a formatted number.
#include "platform/basic/LocalMarks.h"

#include "platform/basic/SystemLocale.h"

#include <algorithm>

namespace platform {

QString withLocalMarks(const QString& formatted, const QLocale& locale) {
    const auto digit = [](QChar c) { return c.isDigit(); };
    const auto begin = std::find_if(formatted.cbegin(), formatted.cend(), digit);
    if (begin == formatted.cend())
        return formatted;
    const auto end = std::find_if(formatted.crbegin(), formatted.crend(), digit).base();
    QString result(formatted.cbegin(), begin - formatted.cbegin());
    if (begin != formatted.cbegin() && *(begin - 1) == u'.')
        result.replace(result.size() - 1, 1, locale.decimalPoint());
    for (auto c = begin; c != end; ++c)
        result += *c == u'.' ? locale.decimalPoint() : *c == u',' ? locale.groupSeparator() : QString(*c);
    return result + QString(end, formatted.cend() - end);
}

QString shownNumber(const QString& formatted) { return withLocalMarks(formatted, systemLocale()); }

}  // namespace platform
