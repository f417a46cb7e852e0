#include "shared/ServerWait.h"

#include "platform/data/postgres/Trial.h"
#include "shared/RecordsVersion.h"

namespace sorvanto {

namespace {

constexpr int longestTrial = 10'000, pauseBetweenClicks = 5'000;  // milliseconds

}  // namespace

ServerWait::ServerWait() = default;

ServerWait::~ServerWait() = default;

void ServerWait::begin(const QString& address) {
    m_address = address;
    m_answers = false;
    ask();
}

void ServerWait::end() { m_trial.reset(); }

void ServerWait::ask() {
    m_trial = std::make_unique<platform::postgres::Trial>(m_address, longestTrial, admissionOfTrial());
    m_asked.start();
}

bool ServerWait::hasAsked() const { return m_trial && m_trial->ended(); }

bool ServerWait::answers(int pause) {
    if (!hasAsked())
        return m_answers;
    m_answers = m_trial->end() == platform::postgres::TrialEnd::Works;
    if (m_asked.hasExpired(pause))
        ask();
    return m_answers;
}

bool ServerWait::isOver(const QString& address) {
    if (!m_trial || address != m_address)
        return true;
    if (answers(pauseBetweenClicks))
        end();
    return !m_trial;
}

}  // namespace sorvanto
