// Where the program under a test keeps its records: a file of its folder, unless the test program has put a server in its
// place.
#pragma once

#include "TestDatabase.h"

namespace support {

class RecordsPlace {
public:
    RecordsPlace() = default;
    virtual ~RecordsPlace() = default;
    RecordsPlace(const RecordsPlace&) = delete;
    RecordsPlace& operator=(const RecordsPlace&) = delete;

    /// The one of this test program.
    static RecordsPlace& current();
    /// It has to stay.
    static void setCurrent(RecordsPlace& place);

    /// As the options name it. file: where the file would lie.
    virtual QString location(const QString& file) const { return file; }
    /// Makes the tables anew, without records.
    virtual void create(const QString& file) { createDatabaseFile(file); }
    /// Past the program, with every right. See runSql.
    virtual Rows run(const QString& file, const QString& statements) { return runSql(file, statements); }
    /// The same for very many rows with keys of their own, where what the place does with each may be left out.
    virtual Rows runInBulk(const QString& file, const QString& statements) { return run(file, statements); }
    /// As run, by a program that waits for nobody; does nothing where it is kept from that.
    virtual void runAtOnce(const QString& file, const QString& statements) { runSqlAtOnce(file, statements); }
    /// The sample pharmacy as delivered.
    virtual void addSample(const QString& file);
    /// From now on INSERT or UPDATE of such a row fails.
    struct Refusal {
        QString event, table, column, value;
    };
    virtual void refuse(const QString& file, const Refusal& refusal);
    /// From now on that is done after each new row (NEW).
    virtual void doAfterInsert(const QString& file, const QString& table, const QString& statement);
    /// From now on each change of such a row is work.
    virtual void slowDown(const QString& file, const QString& table);
    /// As an update gives it to those that have none.
    virtual void giveIdentity(const QString& file);
    /// The records as they are now are from before their history began.
    virtual void beginHistory(const QString& file);
    /// From now on run changes rows of the history.
    virtual void unlockHistory(const QString& file);
    /// All that was written down happened that much later, "-10 days".
    virtual void moveHistory(const QString& file, const QString& span);
};

}  // namespace support
