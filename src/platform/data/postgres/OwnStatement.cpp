#include "platform/data/postgres/OwnStatement.h"

#include "platform/data/Dialect.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace platform::postgres {

OwnStatement ownStatement(const QString& statement, const Catalogue& catalogue) {
    static const QRegularExpression part(
        u"(?<quoted>'(?:[^']++|'')*+'|\"(?:[^\"]++|\"\")*+\")|(?<name>[A-Za-z_][A-Za-z0-9_]*)|\\?(?<place>\\d*)"_s);
    OwnStatement own;
    qsizetype end = 0;
    int parameters = 0;
    for (auto parts = part.globalMatch(statement); parts.hasNext();) {
        const QRegularExpressionMatch match = parts.next();
        own.sql += QStringView(statement).mid(end, match.capturedStart() - end);
        end = match.capturedEnd();
        const QString spelled = catalogue.spelled(match.captured(u"name"_s));
        if (match.hasCaptured(u"place"_s)) {
            const int place = match.captured(u"place"_s).toInt();
            own.sql += u'$' + QString::number(place > 0 ? place : ++parameters);
        } else {
            own.sql += spelled.isEmpty() ? match.captured() : quotedName(spelled);
        }
    }
    own.sql += QStringView(statement).mid(end);
    static const QRegularExpression reading(u"^\\s*(?:SELECT|SHOW|VALUES|WITH)\\b"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    own.reads = reading.match(own.sql).hasMatch();
    return own;
}

}  // namespace platform::postgres
