// What a session is likely to be asked for next: it comes along with another answer and costs no way of its own.
#pragma once

#include "platform/data/postgres/Line.h"

#include <QByteArray>
#include <QByteArrayList>
#include <deque>
#include <iterator>
#include <optional>
#include <vector>

namespace platform::postgres {

class Expected {
public:
    /// SELECTs without parameters, in the order in which they will be run; in the place of those before.
    void set(QByteArrayList statements);
    /// To be sent along with what is asked now.
    std::vector<Command> commands() const;
    /// The answers to these, in their order. From the first that failed on nothing is kept: it is asked anew then, and
    /// fails under its own name.
    using Answer = std::vector<Result>::const_iterator;
    void keep(Answer begin, Answer end);
    /// The answer, where exactly this was to be run next; otherwise what has come along is forgotten.
    std::optional<Result> take(const std::vector<Command>& commands);
    /// What has come along: something else was done meanwhile.
    void forget() { m_answers.clear(); }

private:
    struct Known {
        QByteArray sql;
        Result result;
    };
    QByteArrayList m_statements;
    std::deque<Known> m_answers;
};

}  // namespace platform::postgres
