// What comes before the start goes on without its server: why there are no records, and what can be read meanwhile.
#include "config/ServerTexts.h"
#include "core/BorrowedLanguage.h"
#include "core/DatabaseRescue.h"
#include "core/GoodCopy.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/data/Connection.h"
#include "platform/data/postgres/Trial.h"
#include "shared/Context.h"
#include "shared/RecordsVersion.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::postgres::TrialEnd;

constexpr int longestTrial = 5, millisecondsInSecond = 1000;

const QString readCopy = u"cmdReadCopy"_s;

/// Why a server does not give the records.
struct Obstacle {
    QString text;
    bool away = true;  ///< it is not there; else it has refused this program, for good reasons
};

bool isAway(TrialEnd end) {
    switch (end) {
    case TrialEnd::UnknownName:
    case TrialEnd::NoAnswer:
    case TrialEnd::TookTooLong:
    case TrialEnd::NotReady:
        return true;
    default:
        return false;
    }
}

/// A trial tells more than a failed opening; one that works leaves the version, or that the server is being updated.
Obstacle whatIsInTheWay(const QString& address) {
    const TrialEnd end = platform::postgres::tryServer(address, longestTrial * millisecondsInSecond);
    if (end != TrialEnd::Works)
        return {trialText(end, longestTrial), isAway(end)};
    try {
        platform::Connection server;
        server.open(u"Data Source="_s + address);
        if (const QString refused = versionRefused(server); !refused.isEmpty())
            return {refused, false};
    } catch (const platform::RuntimeError&) {
        // As one that is just starting.
    }
    return {trialText(TrialEnd::NotReady, longestTrial)};
}

StartQuestion::Content contentOf(const QString& address, const Obstacle& obstacle,
                                 const std::optional<GoodCopy>& copy) {
    StartQuestion::Content content;
    content.title = translated(u"Sorvanto Control Panel"_s);
    content.heading = translated(u"The server does not give the records."_s);
    content.file = shownLocation(address);
    content.texts << obstacle.text;
    content.choices.push_back({rescueAgain, translated(u"Try again"_s)});
    content.none = translated(u"Go on without"_s);
    if (!copy)
        return content;
    content.offer
        << madeText(*copy)
        << translated(u"Batches in the copy: %1."_s)
               .replace(u"%1"_s, platform::systemLocale().toString(copy->batches))
        << translated(u"Nothing can be changed in it. Mixing goes on: each batch is kept in the journal and "
                      "signed when the program works on the server again."_s);
    content.choices.push_back({readCopy, translated(u"Read the newest copy"_s)});
    return content;
}

}  // namespace

bool DatabaseRescue::offerServer(const QString& address) {
    if (m_declined.contains(address))
        return false;
    const BorrowedLanguage language(m_context, languageOfOptions(m_context));
    const Obstacle obstacle = whatIsInTheWay(address);
    const auto copy = obstacle.away ? newestGoodCopy(address) : std::nullopt;
    const QString choice = StartQuestion::ask(contentOf(address, obstacle, copy));
    if (choice == readCopy)
        m_context.standIn = StandIn{address, copy->path, copy->made};
    if (choice.isEmpty())
        m_declined << address;
    return !choice.isEmpty();
}

}  // namespace sorvanto
