// A connection that is being opened in a thread of its own: looking up a name and proving a certificate hold nobody up.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

struct pg_conn;

namespace platform::postgres {

class Opening {
public:
    /// Begins. milliseconds: for all of it.
    Opening(const QByteArray& address, int milliseconds);
    /// What is still under way is left to itself and disturbs nobody.
    ~Opening();
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;

    /// Whether it has ended, after that time at the latest.
    bool waitFor(int milliseconds) const;
    /// Whether it has ended without a connection.
    bool hasFailed() const;

    // Once ended.
    /// The connection, which is the caller's then; null where there is none.
    pg_conn* take();
    /// The five characters of the refusal; empty where the server has said nothing.
    QByteArray state() const;
    /// Why there is none: a sentence without names of accounts.
    QString message() const;

private:
    struct Shared;
    std::shared_ptr<Shared> m_shared;
};

}  // namespace platform::postgres
