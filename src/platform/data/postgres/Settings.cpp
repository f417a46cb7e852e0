#include "platform/data/postgres/Settings.h"

namespace platform::postgres {

namespace {

/// As the server reads them at the beginning of a connection.
QByteArray serverSettings() {
    const QByteArray number = QByteArray::number(statementMs), lock = QByteArray::number(lockMs);
    return "-c search_path=sorvanto,pg_temp"
           " -c DateStyle=ISO,YMD -c IntervalStyle=postgres -c TimeZone=UTC"
           " -c extra_float_digits=1 -c standard_conforming_strings=on -c bytea_output=hex"
           " -c default_transaction_isolation=read\\ committed"
           // A change says so by a transaction of its own.
           " -c default_transaction_read_only=on"
           " -c client_min_messages=warning -c synchronous_commit=on"
           // Compiling a statement takes the server longer than running any of ours does.
           " -c jit=off"
           // So that the locks and names of a bench whose line was dropped are free again soon.
           " -c tcp_keepalives_idle=30 -c tcp_keepalives_interval=5 -c tcp_keepalives_count=3"
           " -c tcp_user_timeout=15000"
           " -c statement_timeout=" +
           number + " -c lock_timeout=" + lock;
}

}  // namespace

Settings::Settings(const QByteArray& address) : m_options(serverSettings()) {
    add("dbname", address.constData());
    // Means nothing on a socket of this computer; everywhere else the server has to prove its name.
    add("sslmode", "verify-full");
    add("gssencmode", "disable");
    add("client_encoding", "UTF8");
    add("options", m_options.constData());
    add("fallback_application_name", "sorvanto");
    add("keepalives", "1");
    add("keepalives_idle", "30");
    add("keepalives_interval", "5");
    add("keepalives_count", "3");
    add("tcp_user_timeout", "15000");
    m_keywords.push_back(nullptr);
    m_values.push_back(nullptr);
}

void Settings::add(const char* keyword, const char* value) {
    m_keywords.push_back(keyword);
    m_values.push_back(value);
}

}  // namespace platform::postgres
