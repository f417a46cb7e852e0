// What the token at an index is.
#include "platform/data/TokenView.h"

#include "platform/data/DialectWords.h"

namespace platform {

using Kind = Token::Kind;

bool TokenView::nameAt(std::size_t i) const {
    return at(i, Kind::Bracket) ||
           (at(i, Kind::Name) && !isClauseWord(m_tokens[i]) && !isOperatorWord(m_tokens[i]));
}

bool TokenView::signAt(std::size_t i, QStringView signs) const {
    return at(i, Kind::Operator) && m_tokens[i].text.size() == 1 && signs.contains(m_tokens[i].text);
}

bool TokenView::startsExpression(std::size_t i) const {
    return nameAt(i) || at(i, Kind::Number) || at(i, Kind::String) || at(i, Kind::Date) ||
           at(i, Kind::Identity) || at(i, Kind::Open) || wordAt(i, "NOT") || signAt(i, u"+-");
}

std::size_t TokenView::closeOf(std::size_t open) const {
    int depth = 0;
    for (std::size_t i = open;; ++i) {
        depth += at(i, Kind::Open) ? 1 : at(i, Kind::Close) ? -1 : 0;
        if (depth == 0)
            return i;
    }
}

}  // namespace platform
