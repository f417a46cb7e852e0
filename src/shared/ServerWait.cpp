#include "shared/ServerWait.h"

#include "platform/data/postgres/Trial.h"

namespace sorvanto {

namespace {

constexpr int longestTrial = 10'000;  // milliseconds
constexpr int pause = 5'000;          // from one trial to the next

}  // namespace

ServerWait::ServerWait() = default;

ServerWait::~ServerWait() = default;

void ServerWait::begin(const QString& address) {
    m_trial = std::make_unique<platform::postgres::Trial>(address, longestTrial);
    m_address = address;
    m_asked.start();
}

void ServerWait::end() { m_trial.reset(); }

bool ServerWait::isOver(const QString& address) {
    if (!m_trial || address != m_address)
        return true;
    if (m_trial->ended() && m_trial->end() == platform::postgres::TrialEnd::Works) {
        end();
        return true;
    }
    if (m_trial->ended() && m_asked.hasExpired(pause))
        begin(m_address);
    return false;
}

}  // namespace sorvanto
