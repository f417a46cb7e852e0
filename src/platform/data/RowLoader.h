// Runs the statement of a result set and gives its columns and rows.
#pragma once

#include "platform/data/Connection.h"
#include "platform/data/Dialect.h"
#include "platform/data/FieldList.h"
#include "platform/data/RowStore.h"

#include <functional>

namespace platform {

struct LoadedRows {
    FieldList fields;
    std::unique_ptr<RowStore> rows;
};

/// inMemory: read every row now. Otherwise a statement on one table gives keys with rows on demand: what
/// another statement changes in a row meanwhile may show, which rows there are and their order is fixed.
/// What the statement leaves in any order comes by the columns of orderWithin and then by keys: those of the one table, or
/// the first that is selected.
/// goesOn: asked now and then while every row is read; false ends that, and there are no rows then.
LoadedRows loadRows(const ConnectionPtr& connection, const QString& statement, const QString& orderWithin,
                    bool inMemory, const std::function<bool()>& goesOn = {});

/// The SELECT as the engine reads it, with an order for all of its rows. Throws as loadRows does.
Translation readable(Engine& engine, const QString& statement, const QString& orderWithin);

}  // namespace platform
