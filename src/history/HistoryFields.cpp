#include "history/HistoryFields.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

class FieldReader {
public:
    explicit FieldReader(const QString& text) : m_text(text) {}

    bool atEnd() const { return m_at >= m_text.size(); }
    bool take(QChar mark) {
        if (atEnd() || m_text.at(m_at) != mark)
            return false;
        ++m_at;
        return true;
    }
    QString name() {
        return upTo([](QChar letter) { return letter == '='_L1; });
    }
    QVariant value() {
        if (take(u'\''))
            return quotedText();
        const QString token = upTo([](QChar letter) { return letter == ','_L1 || letter == '>'_L1; });
        if (token == "NULL"_L1)
            return {};
        bool isNumber = false;
        if (const qint64 whole = token.toLongLong(&isNumber); isNumber)
            return whole;
        if (const double number = token.toDouble(&isNumber); isNumber)
            return number;
        return token;
    }

private:
    template <typename Ends>
    QString upTo(Ends ends) {
        const qsizetype start = m_at;
        while (!atEnd() && !ends(m_text.at(m_at)))
            ++m_at;
        return m_text.mid(start, m_at - start);
    }
    /// Behind the first mark; a doubled one stands for itself.
    QString quotedText() {
        QString text;
        while (!atEnd()) {
            const qsizetype mark = m_text.indexOf(u'\'', m_at);
            const qsizetype end = mark < 0 ? m_text.size() : mark;
            text += QStringView(m_text).mid(m_at, end - m_at);
            m_at = end + 1;
            if (!take(u'\''))
                break;
            text += u'\'';
        }
        return text;
    }

    const QString& m_text;
    qsizetype m_at = 0;
};

}  // namespace

std::vector<HistoryField> readHistoryFields(const QString& text) {
    std::vector<HistoryField> fields;
    FieldReader reader(text);
    do {
        HistoryField field{reader.name(), {}, {}};
        if (!reader.take(u'='))
            break;
        field.after = reader.value();
        if (reader.take(u'>')) {
            field.before = field.after;
            field.after = reader.value();
        }
        fields.push_back(field);
    } while (reader.take(u','));
    return fields;
}

}  // namespace sorvanto
