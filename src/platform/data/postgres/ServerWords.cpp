#include "platform/data/postgres/ServerWords.h"

#include "platform/data/ColumnType.h"
#include "platform/data/Lexer.h"
#include "platform/data/StatementWriter.h"
#include "platform/data/postgres/LikeRegex.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

/// The server cuts off what is longer, in bytes.
constexpr qsizetype longestName = 63;

/// The server's own tables and views. A text that is searched for could ask for one.
bool isServersOwn(const QString& name) {
    return name.startsWith("pg_"_L1, Qt::CaseInsensitive) ||
           name.compare("information_schema"_L1, Qt::CaseInsensitive) == 0;
}

}  // namespace

QString ServerWords::lastKey() const { return u"%1::bigint"_s.arg(m_lastKey); }

QString ServerWords::rowKey(const QString& table) const { return quotedName(m_catalogue.key(table)); }

QString ServerWords::name(const QString& name, bool bare) const {
    if (isServersOwn(name))
        refuseStatement(u"No such table or column: %1"_s.arg(name));
    const QString spelled = m_catalogue.spelled(name);
    return spelled.isEmpty() ? alias(name, bare) : quotedName(spelled);
}

QString ServerWords::alias(const QString& name, bool) const {
    const QByteArray bytes = name.toUtf8();
    if (bytes.size() <= longestName)
        return quotedName(name);
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    const QString shorter = u"long "_s + QString::fromLatin1(digest.left(40));
    m_longNames.insert(shorter, name);
    return quotedName(shorter);
}

QString ServerWords::nullsPlace(bool descending) const {
    return descending ? u" NULLS LAST"_s : u" NULLS FIRST"_s;
}

Around ServerWords::truthAsValue() const { return {u"(-("_s, u")::integer)"_s}; }

Around ServerWords::textAlone() const { return {u"("_s, u")::text"_s}; }

/// A whole number as it stands, any other with its shortest digits, as a file writes it.
QString ServerWords::numberForText(const QString& number) const {
    bool whole = false;
    if (const qlonglong value = number.toLongLong(&whole); whole)
        return quotedText(QString::number(value));
    QString text = QString::number(number.toDouble(), 'g', 15);
    if (!text.contains(u'.') && !text.contains(u'e'))
        text += u".0"_s;
    else if (const qsizetype exponent = text.indexOf(u'e'); exponent > 0 && !text.contains(u'.'))
        text.insert(exponent, u".0"_s);
    return quotedText(text);
}

Around ServerWords::valueFor(const QString& declaredType) const {
    const QString kind = declaredType.section(u'(', 0, 0).toLower();
    return {u"dialect_to_%1("_s.arg(kind), u")"_s};
}

QString ServerWords::operatorFunction(const QString& sign) const {
    static const QHash<QString, QString> names{
        {u"+"_s, u"dialect_add"_s},    {u"-"_s, u"dialect_subtract"_s}, {u"*"_s, u"dialect_multiply"_s},
        {u"/"_s, u"dialect_divide"_s}, {u"\\"_s, u"dialect_whole"_s},   {u"MOD"_s, u"dialect_mod"_s},
        {u"^"_s, u"dialect_power"_s},  {u"&"_s, u"dialect_join"_s}};
    return names.value(sign);
}

Around ServerWords::operatorValue(const QString& sign) const {
    const QString form = sign == u"&" ? u"text"_s : sign == u"+" ? u"part"_s : u"number"_s;
    return {u"dialect_%1("_s.arg(form), u")"_s};
}

QString ServerWords::function(const QString& name) const {
    return name == "iif"_L1 ? u"dialect_iif"_s : name;
}

std::pair<QString, QString> ServerWords::like(const QString& pattern, bool negated) const {
    return {negated ? u"!~"_s : u"~"_s, quotedText(likeRegex(pattern))};
}

Around ServerWords::likeText() const { return {u"("_s, u")::text"_s}; }

QString ServerWords::hex(const QString& bytes) const { return u"encode(%1, 'hex')"_s.arg(bytes); }

/// As the triggers quote it.
QString ServerWords::literalOf(const QString& column, const QString& declaredType) const {
    static const QHash<QString, QString> bases{
        {u"DOUBLE"_s, u"double precision"_s}, {u"CURRENCY"_s, u"numeric"_s}, {u"DATETIME"_s, u"timestamp"_s},
        {u"SMALLINT"_s, u"integer"_s},        {u"INTEGER"_s, u"integer"_s},  {u"YESNO"_s, u"integer"_s}};
    return u"quoted(%1::%2)"_s.arg(quotedName(column), bases.value(declaredType, u"text"_s));
}

QString ServerWords::clock(const QString& moment, const QString& minutesAhead) const {
    return u"to_char(%1::text::timestamp + %2 * interval '1 minute', 'YYYY-MM-DD HH24:MI:SS.MS')"_s.arg(
        moment, minutesAhead);
}

QString ServerWords::listedNumbers(const QString& place) const {
    return u"(SELECT e.value::bigint AS value FROM json_array_elements_text(%1::json) AS e)"_s.arg(place);
}

/// Texts of a column are compared without regard to the case of English letters.
QString ServerWords::listedTexts(const QString& place) const {
    return u"(SELECT e.value::citext AS value FROM json_array_elements_text(%1::json) AS e)"_s.arg(place);
}

QString ServerWords::listedTriples(const QString& place) const {
    return u"(SELECT (e.value->>0)::citext AS one, (e.value->>1)::citext AS two, (e.value->>2)::citext AS three "
           "FROM json_array_elements(%1::json) AS e)"_s.arg(place);
}

}  // namespace platform::postgres
