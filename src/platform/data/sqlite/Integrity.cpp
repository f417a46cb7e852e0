// Pages, indexes, checks and relations, in one look that can be stopped.
#include "platform/data/sqlite/Integrity.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/Statement.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

int askCancelled(void* cancelled) { return (*static_cast<const Cancelled*>(cancelled))() ? 1 : 0; }

/// Interrupts what the engine does as soon as the work is cancelled.
class Interruption {
public:
    Interruption(sqlite3* database, const Cancelled& cancelled) : m_database(database) {
        constexpr int stepsBetweenQuestions = 100'000;
        if (cancelled)
            sqlite3_progress_handler(database, stepsBetweenQuestions, askCancelled,
                                     const_cast<Cancelled*>(&cancelled));
    }
    ~Interruption() { sqlite3_progress_handler(m_database, 0, nullptr, nullptr); }
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

private:
    sqlite3* m_database;
};

void collectProblems(sqlite3* database, QStringList& problems) {
    Statement integrity(database, u"PRAGMA integrity_check"_s, {});
    while (integrity.step()) {
        const QString line = integrity.value(0, asText).toString();
        if (line != "ok"_L1)
            problems << line;
    }
    Statement relations(database, u"PRAGMA foreign_key_check"_s, {});
    while (relations.step())
        problems << u"Row %1 of %2 refers to a row of %3 that is not there"_s.arg(
            relations.value(1, asText).toString(), relations.value(0, asText).toString(),
            relations.value(2, asText).toString());
}

}  // namespace

QStringList integrityOf(sqlite3* database, const Cancelled& cancelled) {
    const Interruption interruption(database, cancelled);
    QStringList problems;
    try {
        collectProblems(database, problems);
    } catch (const RuntimeError&) {
        if (!cancelled || !cancelled())
            throw;
    }
    return problems;
}

}  // namespace platform::sqlite
