// Small text rules that the statements and documents rest on.
#include "platform/basic/Text.h"

using namespace Qt::StringLiterals;

namespace platform {

QString trimmed(const QString& text) {
    qsizetype first = 0;
    qsizetype end = text.size();
    while (first < end && text.at(first) == u' ')
        ++first;
    while (end > first && text.at(end - 1) == u' ')
        --end;
    return text.mid(first, end - first);
}

QString doubledApostrophes(const QString& text) {
    QString result = text;
    return result.replace(u'\'', u"''"_s);
}

}  // namespace platform
