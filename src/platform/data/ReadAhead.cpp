#include "platform/data/ReadAhead.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"
#include "platform/data/RowLoader.h"

#include <utility>

namespace platform {

ReadAhead::ReadAhead(ConnectionPtr connection, const std::vector<Set>& sets)
    : m_connection(std::move(connection)) {
    if (!m_connection || !m_connection->isServer())
        return;
    Engine& engine = m_connection->engine();
    QStringList statements;
    try {
        for (const Set& set : sets)
            statements << readable(engine, set.statement, set.orderWithin).sql;
    } catch (const RuntimeError&) {  // told where it is opened
    }
    engine.beginReadAhead(statements);
}

ReadAhead::~ReadAhead() {
    if (m_connection && m_connection->isServer())
        m_connection->engine().endReadAhead();
}

}  // namespace platform
