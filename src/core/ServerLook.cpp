#include "core/ServerLook.h"

#include "core/GoodCopy.h"
#include "platform/basic/Dates.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/Connection.h"
#include "platform/data/Engine.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString backText() { return translated(u"The server answers again."_s); }

}  // namespace

ServerLook::ServerLook(Context& context, Ways ways, const Times& times)
    : m_context(context), m_ways(std::move(ways)), m_times(times) {
    m_timer.callOnTimeout(this, [this] { guarded(u"ServerLook:look"_s, [&] { look(); }); });
    m_timer.start(m_times.interval);
}

void ServerLook::look() {
    const auto& copy = m_context.standIn;
    if (copy && !m_besideCopy.isOn())
        m_besideCopy.begin(copy->server);
    ServerWait& wait = copy ? m_besideCopy : m_context.serverWait;
    if (wait.isOn())
        lookForServer(wait);
    else
        lookAtLine();
}

void ServerLook::lookForServer(ServerWait& wait) {
    const bool back = wait.answers(m_times.pause);
    if (back && m_told != Told::Back)
        announce({backText(), {{translated(u"Return to the server"_s), m_ways.goToServer}}, true});
    m_told = back ? Told::Back : Told::Nothing;
}

void ServerLook::lookAtLine() {
    const auto connection = m_context.connection;
    if (!connection || !connection->isServer())
        return;
    const std::int64_t away = connection->engine().awayFor();
    if (away >= m_times.patience && m_told != Told::Away) {
        const QDateTime since = platform::now().addMSecs(-away);
        Happening gone{translated(u"The server has not answered since %1."_s)
                           .replace(u"%1"_s, platform::timeOfDay(since.time())),
                       {},
                       true,
                       true};
        if (hasCopies(connection->location()))
            gone.actions.push_back({translated(u"Read the newest copy"_s), m_ways.readCopy});
        announce(gone);
        m_told = Told::Away;
    } else if (away == 0 && m_told == Told::Away) {
        announce({backText(), {}, true});
        m_told = Told::Nothing;
    }
}

}  // namespace sorvanto
