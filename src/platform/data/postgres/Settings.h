// How a connection is set, whatever the server or the account would have it be.
#pragma once

#include <QByteArray>
#include <vector>

namespace platform::postgres {

/// After so long the server ends a statement, and the wait for a lock.
inline constexpr int statementMs = 20000;
inline constexpr int lockMs = 2000;

/// Keywords and values as the client library takes them; later ones count.
class Settings {
public:
    /// address: not copied.
    explicit Settings(const QByteArray& address);

    /// Both end with a null.
    const std::vector<const char*>& keywords() const { return m_keywords; }
    const std::vector<const char*>& values() const { return m_values; }

private:
    void add(const char* keyword, const char* value);

    QByteArray m_options;
    std::vector<const char*> m_keywords, m_values;
};

}  // namespace platform::postgres
