#include "platform/data/ReadAhead.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"
#include "platform/data/RowLoader.h"

#include <utility>

namespace platform {

ReadAhead::ReadAhead(ConnectionPtr connection, const std::vector<Set>& sets)
    : m_connection(std::move(connection)) {
    if (!m_connection || m_connection->state() == 0)
        return;
    Engine& engine = m_connection->engine();
    if (!engine.isServer()) {
        if (!sets.empty())
            m_look = engine.beginLook();
        return;
    }
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
