// Walks through the history of a store in the order of its rows and seals each of them anew.
#pragma once

#include "history/HistoryLinks.h"
#include "platform/data/Query.h"

#include <memory>
#include <optional>

namespace sorvanto {

/// A row of the history, and whether it is as it was sealed.
struct ProvenRow {
    std::int64_t number = 0;
    QString table;
    std::int64_t key = 0;
    QString what, when;
    bool isSealed = false;
    bool holds = false;
};

class HistoryProof {
public:
    virtual ~HistoryProof() = default;
    /// The next row; nothing behind the last.
    virtual std::optional<ProvenRow> next() = 0;
    const HistoryLinks& links() const { return m_links; }

protected:
    HistoryLinks m_links;
};

/// By functions within the engine's own walk where it takes some, else by the values as they come. The engine has to stay.
std::unique_ptr<HistoryProof> proveHistory(platform::Engine& database);

}  // namespace sorvanto
