// The values of a command as the client library takes them: as texts.
#pragma once

#include <QByteArray>
#include <QVariant>
#include <vector>

namespace platform::postgres {

class Parameters {
public:
    explicit Parameters(const std::vector<QVariant>& values);

    int count() const { return static_cast<int>(m_types.size()); }
    const unsigned* types() const { return m_types.data(); }
    const char* const* values() const { return m_values.data(); }

private:
    std::vector<QByteArray> m_texts;
    std::vector<const char*> m_values;
    std::vector<unsigned> m_types;  ///< 0 where the place decides
};

}  // namespace platform::postgres
