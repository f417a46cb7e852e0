// What statements may do on one connection to a file; the engine asks while it prepares them.
#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <cstdint>
#include <memory>

struct sqlite3;

namespace platform::sqlite {

class Statement;

class Guard {
public:
    /// From now on the engine asks this object, until it goes.
    explicit Guard(sqlite3* database);
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    /// While a span is open, no statement begins or ends a transaction, or attaches a file.
    void setSpanOpen(bool open);
    void noteSpanTakenBack() { ++m_takenBack; }
    std::int64_t spansTakenBack() const { return m_takenBack; }

    /// Prepares a statement that a user may have had a hand in: a text that is searched for goes in as it was typed. It
    /// reaches the tables of the catalogue and the functions of the dialect and no others, and changes rows only when it
    /// may. What triggers of the file do meanwhile is theirs. Throws RuntimeError(statement) for anything else.
    std::unique_ptr<Statement> prepareTyped(const QString& sql, const QString& statement, bool mayChange);

private:
    enum class Typed { No, Reading, Changing };

    static int answer(void* guard, int action, const char* first, const char* second, const char* database,
                      const char* trigger);
    bool allows(int action, const char* first, const char* second);
    bool knowsTable(const char* name);
    std::unique_ptr<Statement> attempt(const QString& sql, const QString& statement, Typed typed);
    /// Whether there are others than those known so far.
    bool readTables(const QString& statement);

    sqlite3* m_database;
    bool m_spanOpen = false;
    std::int64_t m_takenBack = 0;
    Typed m_typed = Typed::No;
    bool m_metStranger = false;  ///< a table that is not known (yet)
    QSet<QByteArray> m_tables;   ///< lower case
    QByteArray m_lastMet;        ///< of these
};

}  // namespace platform::sqlite
