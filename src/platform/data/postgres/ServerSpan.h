// A transaction of the server, or a savepoint within one.
#pragma once

#include "platform/data/Engine.h"
#include "platform/data/postgres/ServerStore.h"

namespace platform::postgres {

class ServerSpan : public EngineSpan {
public:
    /// The store has to stay.
    ServerSpan(ServerStore& store, QString statement);
    ~ServerSpan() override;
    ServerSpan(const ServerSpan&) = delete;
    ServerSpan& operator=(const ServerSpan&) = delete;

    /// Throws when the server can't keep the changes; they are taken back then. Where the line is lost meanwhile it is
    /// not known whether they were kept, and the error says so.
    void commit() override;

private:
    void takeBack();

    Session& m_session;
    QString m_statement;
    bool m_outermost;
    int m_connection;
    bool m_open = true;
};

}  // namespace platform::postgres
