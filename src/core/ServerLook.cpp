#include "core/ServerLook.h"

#include "core/GoodCopy.h"
#include "platform/basic/Dates.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/Connection.h"
#include "platform/data/Engine.h"
#include "platform/data/postgres/Trial.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::postgres::Trial;
using platform::postgres::TrialEnd;

constexpr int longestLook = 10'000;  // milliseconds

QString backText() { return translated(u"The server answers again."_s); }

}  // namespace

ServerLook::ServerLook(const Context& context, Ways ways, int interval, int patience)
    : m_context(context), m_ways(std::move(ways)), m_patience(patience) {
    m_timer.callOnTimeout(this, [this] { guarded(u"ServerLook:look"_s, [&] { look(); }); });
    m_timer.start(interval);
}

ServerLook::~ServerLook() = default;

void ServerLook::look() {
    if (m_context.standIn)
        lookForServer();
    else
        lookAtLine();
}

// What was begun at one look is read at the next.
void ServerLook::lookForServer() {
    if (m_trial && !m_trial->ended())
        return;
    if (m_trial) {
        const bool back = m_trial->end() == TrialEnd::Works;
        if (back && !m_told)
            announce({backText(), {{translated(u"Return to the server"_s), m_ways.goToServer}}, true});
        m_told = back;
    }
    m_trial = std::make_unique<Trial>(m_context.standIn->server, longestLook);
}

void ServerLook::lookAtLine() {
    const auto connection = m_context.connection;
    if (!connection || !connection->isServer())
        return;
    const std::int64_t away = connection->engine().awayFor();
    if (away >= m_patience && !m_told) {
        const QDateTime since = platform::now().addMSecs(-away);
        Happening gone{translated(u"The server has not answered since %1."_s)
                           .replace(u"%1"_s, platform::timeOfDay(since.time())),
                       {},
                       true,
                       true};
        if (hasCopies(connection->location()))
            gone.actions.push_back({translated(u"Read the newest copy"_s), m_ways.readCopy});
        announce(gone);
        m_told = true;
    } else if (away == 0 && m_told) {
        announce({backText(), {}, true});
        m_told = false;
    }
}

}  // namespace sorvanto
