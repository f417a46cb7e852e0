#include "core/GoodCopy.h"

#include "core/CopySettings.h"
#include "core/CopyShelf.h"
#include "history/HistoryPause.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "shared/FileIdentity.h"
#include "shared/Translator.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QStringList places() {
    QStringList folders{platform::programFolder() + u"/backups"_s};
    if (const QString second = CopySettings::read().secondPlace; !second.isEmpty())
        folders << second;
    return folders;
}

/// The first eight digits of the one identity that all copies bear; empty when there are several, or none.
QString onlyIdentity() {
    static const QRegularExpression form(u"^sorvanto-([0-9a-f]{8})-\\d{4,}-"_s);
    QSet<QString> identities;
    for (const QString& place : places()) {
        for (const QString& name : QDir(place).entryList({u"sorvanto-*.mdb"_s}, QDir::Files)) {
            if (const auto match = form.match(name); match.hasMatch())
                identities << match.captured(1);
        }
    }
    return identities.size() == 1 ? *identities.begin() : QString();
}

/// Empty where it is not known which database that is.
QString identityOf(const QString& database) {
    const QString identity = CopySettings::identityOf(database);
    return identity.isEmpty() ? onlyIdentity() : identity;
}

std::vector<KeptCopy> candidates(const QString& identity) {
    std::vector<KeptCopy> all;
    for (const QString& place : places()) {
        const auto copies = CopyShelf(place, identity).copies();
        all.insert(all.end(), copies.begin(), copies.end());
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const KeptCopy& a, const KeptCopy& b) { return a.number > b.number; });
    return all;
}

std::int64_t batchesOf(const platform::Connection& connection, const QString& lot) {
    const bool all = lot.isNull();
    platform::Query rows(
        connection.engine(),
        all ? u"SELECT count(*) FROM Log"_s : u"SELECT count(*) FROM Log WHERE log_Lot = ?"_s, {});
    if (!all)
        rows.bind(1, lot);
    return rows.step() ? rows.integer(0) : 0;
}

/// Nothing when the copy is not sound, or of another database; those of the first version don't tell of which.
std::optional<GoodCopy> checked(const KeptCopy& kept, const QString& identity) {
    if (!platform::integrityProblems(kept.path).isEmpty())
        return {};
    platform::Connection connection;
    connection.open(u"Data Source="_s + kept.path);
    const auto own = readFileIdentity(connection);
    if (!own || !own->identity.startsWith(identity))
        return {};
    const QDateTime made(kept.made.date(), kept.made.time(), Qt::UTC);
    GoodCopy copy{kept.path, made, batchesOf(connection, QString()), mixesLoggedSince(made, own->identity)};
    std::erase_if(copy.unknownToIt, [&](const LoggedMix& mix) { return batchesOf(connection, mix.lot) > 0; });
    return copy;
}

}  // namespace

bool hasCopies(const QString& database) {
    const QString identity = identityOf(database);
    return !identity.isEmpty() && !candidates(identity).empty();
}

QString madeText(const GoodCopy& copy) {
    const QString time = platform::timeOfDay(copy.made.time());
    if (copy.made.date() == platform::today().date())
        return translated(u"Copy of today %1, checked."_s).replace(u"%1"_s, time);
    const QString day = platform::dateText(QDateTime(copy.made.date(), QTime(0, 0), Qt::UTC));
    return translated(u"Copy of %1, checked."_s).replace(u"%1"_s, day + ' '_L1 + time);
}

std::optional<GoodCopy> newestGoodCopy(const QString& database) {
    const QString identity = identityOf(database);
    if (identity.isEmpty())
        return {};
    for (const KeptCopy& kept : candidates(identity)) {
        try {
            if (auto copy = checked(kept, identity))
                return copy;
        } catch (const platform::RuntimeError&) {
            // This one is of no use either; the next older may be.
        }
    }
    return {};
}

PutBack putBack(const GoodCopy& copy, const QString& database) {
    PutBack done;
    done.aside = platform::restoreDatabase(
        copy.path, database, [&](const QString& restored) { noteRestored(restored, copy.path); });
    for (const LoggedMix& mix : copy.unknownToIt) {
        try {
            openAgain(mix);
        } catch (const platform::RuntimeError& failure) {
            done.notOpened << mix.lot + u": "_s + failure.description();
        }
    }
    return done;
}

}  // namespace sorvanto
