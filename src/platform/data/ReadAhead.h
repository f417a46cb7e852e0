// What is going to be read at once, one statement after the other, and all of one moment: a server answers it along with the
// first of them, by one message there and one back; a file is held meanwhile, so that nobody writes in between.
//   const ReadAhead lines(openDB(), {{linesOf(key)}});
//   row->open(statementOfRow(key), openDB());              // brings the row itself and the lines along
//   lines->open(linesOf(key), openDB(), ..., CursorLocation::Client);
#pragma once

#include "platform/data/Connection.h"

#include <QString>
#include <memory>
#include <vector>

namespace platform {

class EngineLook;

class ReadAhead {
public:
    /// A set with a client-side cursor; orderWithin as it is told to the set.
    struct Set {
        QString statement, orderWithin = {};
    };
    /// In the order in which they will be opened, behind a list whose first rows are read first. One that is opened in another order, after a change, or not at all,
    /// costs the server's work and is not an error; nor is a statement that fails, before it is opened itself. Where any is
    /// named, nothing may be changed or asked of the user while it stands.
    ReadAhead(ConnectionPtr connection, const std::vector<Set>& sets);
    /// Nothing that has come along is used any more.
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

private:
    ConnectionPtr m_connection;
    std::unique_ptr<EngineLook> m_look;  ///< of a file
};

}  // namespace platform
