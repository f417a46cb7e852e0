// What statements may do on one connection to a file, asked by the engine while it prepares them.
#pragma once

struct sqlite3;

namespace platform::sqlite {

class Guard {
public:
    explicit Guard(sqlite3* database);
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    /// While a span is open, no statement begins or ends a transaction, or attaches a file.
    void setSpanOpen(bool open);

private:
    static int answer(void* guard, int action, const char* first, const char* second, const char* database,
                      const char* trigger);

    sqlite3* m_database;
    bool m_spanOpen = false;
};

}  // namespace platform::sqlite
