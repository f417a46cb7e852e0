// Where the records of a data test are kept. Which one it is, is settled by what a test program is linked with: most of
// its tests run once with a file and once with a server.
#pragma once

#include "TestDatabase.h"

#include <QString>
#include <memory>

namespace support {

class DataStore {
public:
    virtual ~DataStore() = default;
    /// As the options name it.
    virtual QString location() const = 0;
    /// Past the program's own data layer, with every right. See runSql.
    virtual Rows run(const QString& statements) = 0;
    /// Takes everything for this caller alone, and leaves it again.
    virtual void takeAll() = 0;
    /// From now on each change of a row of that table fails.
    virtual void breakTable(const QString& table) = 0;
    /// The statement by which the program's connection goes other ways through its tables.
    virtual QString otherWays() const = 0;
};

/// The records as the file of that path holds them.
std::unique_ptr<DataStore> openStore(const QString& file);

}  // namespace support
