#include "platform/data/postgres/ServerSpan.h"

#include "platform/basic/RuntimeError.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

const char* beginOf(Sees sees) {
    return sees == Sees::OneMoment ? "BEGIN ISOLATION LEVEL REPEATABLE READ READ WRITE" : "BEGIN READ WRITE";
}

}  // namespace

ServerSpan::ServerSpan(ServerStore& store, QString statement, Sees sees)
    : m_store(store), m_session(store.session), m_statement(std::move(statement)),
      m_outermost(!m_session.isSpanOpen()) {
    if (store.refusesChanges)
        throw RuntimeError(error::permissionDenied, u"The records are open for reading only"_s, u"Database"_s,
                           m_statement);
    m_session.control(m_outermost ? beginOf(sees) : "SAVEPOINT span", m_statement);
    m_connection = m_session.connectionNumber();
    m_session.countSpan(+1);
}

ServerSpan::~ServerSpan() {
    if (!m_open)
        return;
    ++m_store.spansTakenBack;
    try {
        takeBack();
    } catch (const RuntimeError&) {
        // The line is lost, and with it all that was not committed.
    }
    m_session.countSpan(-1);
}

/// Over another line there is nothing to take back.
void ServerSpan::takeBack() {
    if (m_session.connectionNumber() != m_connection)
        return;
    if (!m_outermost)
        m_session.control("ROLLBACK TO span", m_statement);
    m_session.control(m_outermost ? "ROLLBACK" : "RELEASE span", m_statement);
}

void ServerSpan::commit() {
    m_session.control(m_outermost ? "COMMIT" : "RELEASE span", m_statement);
    m_session.countSpan(-1);
    m_open = false;
}

ServerLook::ServerLook(ServerStore& store) : m_session(store.session), m_own(!m_session.isSpanOpen()) {
    if (!m_own)
        return;
    m_session.control(beginOneMoment, {});
    m_connection = m_session.connectionNumber();
    m_session.countSpan(+1);
}

ServerLook::~ServerLook() {
    if (!m_own)
        return;
    try {
        if (m_session.connectionNumber() == m_connection)
            m_session.control("ROLLBACK", {});
    } catch (const RuntimeError&) {
        // The line is lost, and there was nothing to keep.
    }
    m_session.countSpan(-1);
}

}  // namespace platform::postgres
