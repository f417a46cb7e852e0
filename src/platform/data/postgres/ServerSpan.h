// A transaction of the server, or a savepoint within one.
#pragma once

#include "platform/data/Engine.h"
#include "platform/data/postgres/ServerStore.h"

namespace platform::postgres {

class ServerSpan : public EngineSpan {
public:
    /// The store has to stay.
    ServerSpan(ServerStore& store, QString statement, Sees sees = Sees::Latest);
    ~ServerSpan() override;
    ServerSpan(const ServerSpan&) = delete;
    ServerSpan& operator=(const ServerSpan&) = delete;

    /// Throws when the server can't keep the changes; they are taken back then. Where the line is lost meanwhile it is
    /// not known whether they were kept, and the error says so.
    void commit() override;

private:
    void takeBack();

    ServerStore& m_store;
    Session& m_session;
    QString m_statement;
    bool m_outermost;
    int m_connection;
    bool m_open = true;
};

/// A transaction that reads, where none is open.
class ServerLook : public EngineLook {
public:
    /// The store has to stay.
    explicit ServerLook(ServerStore& store);
    ~ServerLook() override;
    ServerLook(const ServerLook&) = delete;
    ServerLook& operator=(const ServerLook&) = delete;

private:
    Session& m_session;
    bool m_own;
    int m_connection = 0;
};

}  // namespace platform::postgres
