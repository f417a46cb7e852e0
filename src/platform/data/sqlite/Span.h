// A transaction of a file, or a savepoint within one.
#pragma once

#include "platform/data/Engine.h"

struct sqlite3;

namespace platform::sqlite {

class Guard;

class Span : public EngineSpan {
public:
    /// Takes the file's write lock at once. Both must outlive it.
    Span(sqlite3* database, Guard& guard, QString statement);
    ~Span() override;
    Span(const Span&) = delete;
    Span& operator=(const Span&) = delete;

    /// Throws when the engine can't keep the changes; they are taken back then.
    void commit() override;

private:
    /// Runs one of the span's own statements past the guard; the engine's code.
    int control(const char* statement) const;

    sqlite3* m_database;
    Guard& m_guard;
    QString m_statement;
    bool m_outermost;
    bool m_open = true;
};

/// A transaction that reads, where none is open.
class Look : public EngineLook {
public:
    /// Must outlive it.
    explicit Look(sqlite3* database);
    ~Look() override;
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;

private:
    sqlite3* m_database;
    bool m_own;
};

}  // namespace platform::sqlite
