#include "core/BenchWatch.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/widgets/AnswerWait.h"
#include "platform/widgets/UnderWay.h"
#include "shared/Context.h"

namespace sorvanto {

namespace {
constexpr int pauseBetweenLooks = 2000;  // milliseconds
}

BenchWatch::BenchWatch(const Context& context, std::function<std::optional<BenchMix>()> mix, QObject* parent)
    : QObject(parent), m_context(context), m_mix(std::move(mix)) {
    m_next.setInterval(pauseBetweenLooks);
    connect(&m_next, &QTimer::timeout, this, &BenchWatch::look);
    m_next.start();
}

void BenchWatch::look() {
    m_next.start();
    if (!platform::UnderWay::any() && ask())
        emit looked();
}

bool BenchWatch::ask() {
    const auto connection = m_context.connection;
    if (!connection || !connection->isServer())
        return false;
    if (m_asked.lock() != connection)
        m_state.reset();
    const platform::AnswerWait::Quietly quietly;
    try {
        const HistoryEnds ends = lookAround(connection->engine(), m_mix());
        const bool news = m_state && haveOthersWritten(connection->engine(), m_state->ends, ends);
        m_state = OthersState{ends, (m_state ? m_state->changes : 0) + (news ? 1 : 0)};
        m_asked = connection;
        return true;
    } catch (const platform::RuntimeError&) {
        return false;
    }
}

}  // namespace sorvanto
