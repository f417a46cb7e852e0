#include "history/HistoryFields.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr QChar mark = u'\'';

class LiteralReader {
public:
    explicit LiteralReader(QStringView text) : m_text(text) {}

    bool atEnd() const { return m_at >= m_text.size(); }
    bool take(QChar letter) {
        if (atEnd() || m_text.at(m_at) != letter)
            return false;
        ++m_at;
        return true;
    }
    QStringView name() {
        const qsizetype start = m_at;
        const qsizetype end = m_text.indexOf(u'=', start);
        m_at = end < 0 ? m_text.size() : end;
        return m_text.sliced(start, m_at - start);
    }
    QStringView literal() {
        const qsizetype start = m_at;
        if (take(mark))
            toEndOfQuoted();
        else
            while (!atEnd() && m_text.at(m_at) != u',' && m_text.at(m_at) != u'>')
                ++m_at;
        return m_text.sliced(start, m_at - start);
    }

private:
    /// Behind the mark that ends it; a doubled one stands for itself.
    void toEndOfQuoted() {
        do {
            const qsizetype next = m_text.indexOf(mark, m_at);
            m_at = next < 0 ? m_text.size() : next + 1;
        } while (take(mark));
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

/// A quoted literal that nothing ends goes to its end.
QString textOf(QStringView literal) {
    qsizetype marks = 0;
    for (qsizetype at = literal.size(); at > 1 && literal.at(at - 1) == mark; --at)
        ++marks;
    const QStringView inner = literal.sliced(1, literal.size() - 1 - marks % 2);
    return inner.toString().replace(u"''"_s, u"'"_s);
}

}  // namespace

std::vector<HistoryLiterals> readHistoryLiterals(QStringView text) {
    std::vector<HistoryLiterals> fields;
    LiteralReader reader(text);
    do {
        HistoryLiterals field{reader.name(), {}, {}};
        if (!reader.take(u'='))
            break;
        field.after = reader.literal();
        if (reader.take(u'>')) {
            field.before = field.after;
            field.after = reader.literal();
        }
        fields.push_back(field);
    } while (reader.take(u','));
    return fields;
}

QVariant historyValueOf(QStringView literal) {
    if (literal.startsWith(mark))
        return textOf(literal);
    if (literal == "NULL"_L1)
        return {};
    bool isNumber = false;
    if (const qint64 whole = literal.toLongLong(&isNumber); isNumber)
        return whole;
    if (const double number = literal.toDouble(&isNumber); isNumber)
        return number;
    return literal.toString();
}

std::vector<HistoryField> readHistoryFields(const QString& text) {
    std::vector<HistoryField> fields;
    for (const HistoryLiterals& field : readHistoryLiterals(text)) {
        const bool hasBefore = !field.before.isNull();
        fields.push_back({field.name.toString(), hasBefore ? historyValueOf(field.before) : QVariant(),
                          historyValueOf(field.after)});
    }
    return fields;
}

QString fieldsSql(platform::Engine& database, const QString& table, const QStringList& columns) {
    QStringList parts;
    for (const QString& column : columns)
        parts << u"'%1=' || %2"_s.arg(
            column, database.words().literalOf(column, database.declaredType(table, column)));
    return parts.join(u" || ',' || "_s);
}

}  // namespace sorvanto
