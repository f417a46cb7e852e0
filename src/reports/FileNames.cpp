#include "reports/FileNames.h"

#include "shared/Translator.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int longest = 90;  // characters of title and record

/// Letters and digits of any language, and signs that no system gives a meaning.
QString safe(QString text) {
    static const QRegularExpression others(u"[^\\p{L}\\p{M}\\p{N} ,.%()+_-]+"_s);
    return text.replace(others, u" "_s).simplified();
}

QString named(const char* title, const QStringList& record, const QString& days) {
    QString text = safe(translated(QLatin1String(title)) + u' ' + record.join(u' ')).left(longest).trimmed();
    if (!text.isEmpty() && text.back().isHighSurrogate())
        text.chop(1);
    return text + u' ' + days;
}

}  // namespace

QString reportFileName(const char* title, const QStringList& record, const QDate& day) {
    return named(title, record, day.toString(Qt::ISODate));
}

QString reportFileName(const char* title, const QStringList& record, const QDate& first, const QDate& last) {
    return named(title, record, first.toString(Qt::ISODate) + u' ' + last.toString(Qt::ISODate));
}

}  // namespace sorvanto
