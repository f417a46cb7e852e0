#include "platform/data/postgres/Expected.h"

#include <utility>

namespace platform::postgres {

void Expected::set(QByteArrayList statements) {
    m_answers.clear();
    m_statements = std::move(statements);
}

std::vector<Command> Expected::commands() const {
    std::vector<Command> commands;
    for (const QByteArray& sql : m_statements)
        commands.push_back({sql, {}, false});
    return commands;
}

void Expected::keep(Answer begin, Answer end) {
    m_answers.clear();
    for (const QByteArray& sql : std::exchange(m_statements, {})) {
        if (begin == end || begin->failed())
            return;
        m_answers.push_back({sql, *begin++});
    }
}

std::optional<Result> Expected::take(const std::vector<Command>& commands) {
    if (m_answers.empty())
        return {};
    const bool asked = commands.size() == 1 && !commands.front().describe &&
                       commands.front().parameters.empty() && commands.front().sql == m_answers.front().sql;
    if (!asked) {
        m_answers.clear();
        return {};
    }
    const Result result = m_answers.front().result;
    m_answers.pop_front();
    return result;
}

}  // namespace platform::postgres
