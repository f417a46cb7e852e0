// One walk over the words of the statement that stand in no parenthesis.
#include "platform/data/OrderReader.h"

#include "platform/data/DialectWords.h"
#include "platform/data/TokenView.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Kind = Token::Kind;

class OrderReader {
public:
    OrderReader(const std::vector<Token>& tokens, const StatementWriter& writer)
        : m_view(tokens), m_writer(writer) {}

    RowOrder read() {
        std::size_t groupsFrom = 0;
        for (std::size_t i = 1; i < m_view.size(); i = next(i)) {
            if (!m_view.at(i, Kind::Name) || isPartOfPath(i))
                continue;
            if (groupsFrom > 0 && isOneOf(m_view[i], {"HAVING", "ORDER"}))
                m_found.groups = groups(groupsFrom, i), groupsFrom = 0;
            if (m_view.wordAt(i, "FROM") && m_selecting)
                readColumns(i);
            else if (m_view.wordAt(i, "GROUP"))
                groupsFrom = i + 2;
            else if (m_view.wordAt(i, "ORDER"))
                m_found.ordered = true;
            else if (isOneOf(m_view[i], {"DISTINCT", "UNION", "INTERSECT", "EXCEPT", "LIMIT"}))
                m_found.complete = true;
        }
        if (groupsFrom > 0)
            m_found.groups = groups(groupsFrom, m_view.size());
        m_found.descending = m_found.ordered && m_view.wordAt(m_view.size() - 1, "DESC");
        m_found.complete = m_found.complete || (m_sums && m_found.groups.isEmpty());
        return m_found;
    }

private:
    /// Behind the token, or behind the parenthesis that it opens.
    std::size_t next(std::size_t i) const { return m_view.at(i, Kind::Open) ? m_view.closeOf(i) + 1 : i + 1; }

    bool isName(std::size_t i) const { return m_view.at(i, Kind::Name) || m_view.at(i, Kind::Bracket); }

    /// Table or column of Table.Column: most words of a long list.
    bool isPartOfPath(std::size_t i) const {
        return m_view.at(i - 1, Kind::Dot) || m_view.at(i + 1, Kind::Dot);
    }

    /// As the rows are ordered by them where nothing else is said.
    QString groups(std::size_t from, std::size_t end) const {
        QString all;
        for (std::size_t i = from; i < end; i = next(i)) {
            if (!m_view.at(i, Kind::Comma))
                continue;
            all += m_writer.join(from, i) + m_writer.words().nullsPlace(false) + u", "_s;
            from = i + 1;
        }
        return all + m_writer.join(from, end) + m_writer.words().nullsPlace(false);
    }

    void readColumns(std::size_t from) {
        m_selecting = false;
        for (std::size_t i = 1; i < from; i = next(i)) {
            if (m_view.at(i + 1, Kind::Dot) && isName(i) && isName(i + 2))
                m_found.columns.emplace_back(m_view[i].text, m_view[i + 2].text);
            if (m_view.at(i + 1, Kind::Open) && m_view.at(i, Kind::Name))
                m_sums = m_sums || isOneOf(m_view[i], {"COUNT", "SUM", "AVG", "MIN", "MAX"});
        }
    }

    const TokenView m_view;
    const StatementWriter& m_writer;
    RowOrder m_found;
    bool m_selecting = true;
    bool m_sums = false;
};

/// The ORDER BY whose first part begins there.
void writeOrder(const TokenView& tokens, std::size_t i, StatementWriter& writer) {
    std::size_t last = i;
    const auto finishPart = [&] {
        writer.wrap(last, last + 1, {}, writer.words().nullsPlace(tokens.wordAt(last, "DESC")));
    };
    for (; i < tokens.size() && !tokens.at(i, Kind::Close); ++i) {
        if (isOneOf(tokens[i], {"LIMIT", "OFFSET", "UNION", "EXCEPT", "INTERSECT"}))
            break;
        if (tokens.at(i, Kind::Comma))
            finishPart();
        else
            last = i = tokens.at(i, Kind::Open) ? tokens.closeOf(i) : i;
    }
    finishPart();
}

}  // namespace

void writeOrders(const std::vector<Token>& tokens, StatementWriter& writer) {
    const TokenView view(tokens);
    for (std::size_t i = 0; i + 2 < view.size(); ++i) {
        if (view.wordAt(i, "ORDER") && view.wordAt(i + 1, "BY"))
            writeOrder(view, i + 2, writer);
    }
}

RowOrder rowOrder(const std::vector<Token>& tokens, const StatementWriter& writer) {
    return OrderReader(tokens, writer).read();
}

}  // namespace platform
