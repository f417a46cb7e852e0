// Looks every two seconds what other benches have written, and tells on the way what is mixed here. A server alone is looked
// at; one that does not answer is told by what the user does next.
#pragma once

#include "shared/RecordChange.h"

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

namespace platform {
class Connection;
}

namespace sorvanto {

struct Context;

class BenchWatch : public QObject {
    Q_OBJECT

public:
    /// mix: what is mixed here now.
    BenchWatch(const Context& context, std::function<std::optional<BenchMix>()> mix,
               QObject* parent = nullptr);

    /// Nothing before the first look.
    const std::optional<OthersState>& state() const { return m_state; }
    /// At once, but not into work that is under way, which may be one span of changes; the next look of its own comes two
    /// seconds later.
    void look();

signals:
    /// A look was taken.
    void looked();

private:
    bool ask();

    const Context& m_context;
    std::function<std::optional<BenchMix>()> m_mix;
    QTimer m_next;
    std::optional<OthersState> m_state;
    std::weak_ptr<platform::Connection> m_asked;  ///< whose state that is
};

}  // namespace sorvanto
