// A span of changes that is kept whole or not at all. The outermost one of a connection is a transaction of the
// store, one within another a savepoint. Unless committed, it is taken back however its scope is left. As long as
// one is open, no other statement can begin or end a transaction, or attach another file.
#pragma once

#include "platform/data/Engine.h"

#include <QString>
#include <memory>

namespace platform {

class Transaction {
public:
    /// statement: what the failure's report names. Whoever reads, decides by that and writes asks for OneMoment: a file keeps
    /// others from writing at once, a server refuses what they have overtaken.
    /// Throws permissionDenied when the store stays locked or can't be written.
    explicit Transaction(Engine& engine, const QString& statement = {}, Sees sees = Sees::Latest)
        : m_span(engine.beginSpan(statement, sees)) {}

    /// Throws when the engine can't keep the changes; they are taken back then.
    void commit() { m_span->commit(); }

private:
    std::unique_ptr<EngineSpan> m_span;
};

}  // namespace platform
