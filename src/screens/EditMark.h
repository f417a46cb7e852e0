// Benches that share their records see of each other who is changing which one. The last save wins all the same.
#pragma once

#include <QString>
#include <cstdint>
#include <memory>

namespace platform {
class Connection;
}

namespace sorvanto {

struct Context;

class EditMark {
public:
    explicit EditMark(Context& context) : m_context(context) {}

    /// This record is being changed here from now on. Where another bench changes it, that is announced. Never throws.
    void begin(const QString& table, std::int64_t key) noexcept;
    void end() noexcept;

private:
    Context& m_context;
    QString m_name;
    std::weak_ptr<platform::Connection> m_connection;  ///< that keeps it
};

}  // namespace sorvanto
