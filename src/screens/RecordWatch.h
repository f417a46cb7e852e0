// What others do to the record on show. Nothing is asked when a record comes on show: how far each bench had written at the
// last look before that is known, and whatever is written behind it counts as new.
#pragma once

#include "shared/RecordChange.h"

#include <QString>
#include <cstdint>
#include <optional>

namespace sorvanto {

struct Context;

class RecordWatch {
public:
    explicit RecordWatch(Context& context) : m_context(context) {}

    void note(const OthersState& state);
    /// Nothing before the first look.
    const std::optional<OthersState>& latest() const { return m_latest; }

    /// This record is on show; nothing happens where it was before.
    void watch(const QString& table, std::int64_t key);
    /// Whether others have changed it since the last time. name: of the record. Throws as the engine does.
    void look(const QString& name);
    /// What is on show is older than a change of others; not so of a record that is deleted.
    bool isStale() const { return m_stale; }
    void reread() { m_stale = false; }
    const RecordChange* change() const { return m_change ? &*m_change : nullptr; }
    void putAside() { m_change.reset(); }

private:
    void take(const std::vector<HistoryEntry>& entries, const QString& name);
    void takeOfIngredients(const std::vector<HistoryEntry>& entries);

    Context& m_context;
    std::optional<OthersState> m_latest;
    std::optional<HistoryEnds> m_seen;  ///< what was written until then is told, or was read with the record
    std::optional<RecordChange> m_change;
    QString m_table;
    std::int64_t m_key = 0;
    bool m_stale = false;
};

}  // namespace sorvanto
