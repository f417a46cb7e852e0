// The keys of a result set's rows, in its order. A table without a gap in its keys, which is what most are, takes the
// room of two numbers however long it is.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace platform {

class RowKeys {
public:
    explicit RowKeys(std::vector<std::int64_t> keys = {}) : m_keys(std::move(keys)) {}
    /// first, first + 1 and so on.
    RowKeys(std::int64_t first, std::int64_t count) : m_first(first), m_count(count) {}

    std::int64_t count() const { return m_count + static_cast<std::int64_t>(m_keys.size()); }
    /// row from 0 to count - 1.
    std::int64_t at(std::int64_t row) const {
        return row < m_count ? m_first + row : m_keys[static_cast<std::size_t>(row - m_count)];
    }
    void append(std::int64_t key) { m_keys.push_back(key); }
    void sort() {
        if (!std::is_sorted(m_keys.begin(), m_keys.end()))
            std::sort(m_keys.begin(), m_keys.end());
    }

private:
    std::int64_t m_first = 0, m_count = 0;
    std::vector<std::int64_t> m_keys;  ///< those behind the gapless ones
};

}  // namespace platform
