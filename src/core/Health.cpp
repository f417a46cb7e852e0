#include "core/Health.h"

#include "config/ServerTexts.h"
#include "config/clsOptions.h"
#include "core/CopySettings.h"
#include "core/CopyShelf.h"
#include "core/KeysLeft.h"
#include "core/MomentText.h"
#include "history/OtherBenches.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "platform/xml/XmlDocument.h"
#include "shared/Context.h"
#include "shared/ErrorReporter.h"
#include "shared/FileIdentity.h"
#include "shared/Translator.h"
#include "shared/databaseInUse.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int daysLookedAt = 30;

QString grouped(std::int64_t number) {
    return platform::systemLocale().toString(static_cast<qlonglong>(number));
}

QString with(QString text, const QString& value) { return text.replace(u"%1"_s, value); }

bool isOpen(const Context& context) { return context.connection && context.connection->state() == 1; }

/// The lines of batches have keys that the program never reads, and are counted all the same.
std::int64_t rowsOfRecords(const platform::Connection& connection) {
    return platform::number(connection.engine(), u"SELECT count(*) FROM LogChem"_s) +
           rowsWithKeys(connection);
}

HealthLine databaseLine(const Context& context, const QString& readingOnly) {
    const QString title = translated(u"Database"_s);
    if (!isOpen(context))
        return {title, translated(u"Not open"_s), {}, false};
    const auto& connection = *context.connection;
    const std::int64_t rows = rowsOfRecords(connection);
    const bool writable = readingOnly.isEmpty() && !connection.isReadOnly();
    const QString state = writable ? translated(u"Open, writable, %1 row | Open, writable, %1 rows"_s)
                                   : translated(u"Open for reading, %1 row | Open for reading, %1 rows"_s);
    const auto identity = readFileIdentity(connection);
    const QString place = context.standIn ? context.standIn->server : connection.location();
    HealthLine line{title + ' '_L1 + shortLocation(place), platform::counted(state, rows), {}, writable};
    line.detail = shownLocation(connection.location());
    if (identity)
        line.detail += u"   "_s + with(translated(u"Identity %1"_s), identity->identity.left(8));
    if (!readingOnly.isEmpty())
        line.detail = readingOnly;
    return line;
}

/// "About 11 months at 7 batches a day": as long as the last thirty days tell, for the keys of batches alone.
QString timeLeft(const platform::Connection& connection, const TableKeys& table) {
    if (table.name != "Logs"_L1)
        return {};
    const QString since = platform::storedDate(platform::today().addDays(-daysLookedAt));
    platform::Query recent(connection.engine(), u"SELECT count(*) FROM Log WHERE log_Date >= ?"_s, {});
    recent.bind(1, since);
    const std::int64_t batches = recent.step() ? recent.integer(0) : 0;
    if (batches == 0)
        return {};
    const auto months = table.left() / batches;
    const auto aDay = std::max<std::int64_t>(1, (batches + daysLookedAt / 2) / daysLookedAt);
    const QString pace = platform::counted(translated(u"%1 batch a day | %1 batches a day"_s), aDay);
    if (months == 0)
        return with(translated(u"Less than a month at %1"_s), pace);
    return platform::counted(translated(u"About %1 month at %2 | About %1 months at %2"_s), months)
        .replace(u"%2"_s, pace);
}

HealthLine keysLine(const Context& context) {
    const QString title = translated(u"Keys left"_s);
    if (!isOpen(context))
        return {title, translated(u"Not open"_s), {}, false};
    const auto tables = keysLeft(*context.connection);
    const TableKeys& fewest = tables.front();
    const auto shown = [](const TableKeys& table) {
        return translated(table.name) + ' '_L1 + grouped(table.left());
    };
    HealthLine line{title, shown(fewest), {}, !fewest.isShort()};
    line.note = timeLeft(*context.connection, fewest);
    QStringList others;
    for (std::size_t i = 1; i < tables.size(); ++i)
        others << shown(tables[i]).replace(' '_L1, QChar::Nbsp);
    line.detail = others.join(u" · "_s);
    if (fewest.isShort())
        line.detail = translated(u"sorvanto-db archive puts older batches into an archive and makes room."_s);
    return line;
}

HealthLine copyLine(const Context& context) {
    const auto identity = isOpen(context) ? readFileIdentity(*context.connection) : std::nullopt;
    const CopyShelf shelf(platform::programFolder() + u"\\backups"_s,
                          identity ? identity->identity : QString());
    const auto copies = shelf.copies();
    const QString title = translated(u"Newest copy"_s);
    if (copies.empty())
        return {title, translated(u"None yet"_s), {}, false};
    const bool ofToday = copies.front().made.date() == platform::today().date();
    return {title, with(translated(u"%1, checked"_s), momentText(copies.front().made)),
            with(translated(u"Copies in backups: %1"_s), QString::number(copies.size())), ofToday};
}

/// By the rights that the program has now; the library asks for those that it was started with.
bool mayBeWritten(const QString& folder) {
    return ::faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK, AT_EACCESS) == 0;
}

HealthLine secondPlaceLine() {
    const CopySettings settings = CopySettings::read();
    const QString place = settings.secondPlace;
    HealthLine line{translated(u"Second place for copies"_s), translated(u"None set"_s), {}};
    line.isSecondPlace = true;
    if (!settings.problem.isEmpty())
        return {line.name,
                translated(u"Can not be read"_s),
                {},
                false,
                CopySettings::file() + u": "_s + settings.problem};
    if (place.isEmpty())
        return line;
    const QFileInfo folder(place);
    line.good = folder.isDir() && mayBeWritten(place);
    if (line.good)
        line.state = translated(u"Ready"_s);
    else
        line.state = folder.isDir() ? translated(u"Can not be written"_s) : translated(u"Not there now"_s);
    return line;
}

/// What it mixes; never for whom.
QString benchText(const BenchAtWork& bench) {
    QString text = translated(u"no mix under way"_s);
    if (bench.mix && bench.formula.isEmpty())
        text = with(translated(u"mixing since %1"_s), momentText(bench.mix->since));
    else if (bench.mix)
        text = with(translated(u"mixing %1 since %2"_s).replace(u"%2"_s, momentText(bench.mix->since)),
                    bench.formula);
    return bench.name + u" · "_s + text;
}

/// Records on a server are nobody's alone.
HealthLine benchesLine(const platform::Connection& server) {
    QStringList benches;
    for (const BenchAtWork& bench : benchesAtWork(server.engine()))
        benches << benchText(bench);
    return {translated(u"Benches at work"_s), grouped(benches.size()), {}, true, benches.join(u'\n')};
}

HealthLine lockLine(const Context& context, const QString& readingOnly) {
    const QString title = translated(u"Lock of the program"_s);
    if (isOpen(context) && context.connection->isServer())
        return benchesLine(*context.connection);
    if (!readingOnly.isEmpty())
        return {title, translated(u"Not held"_s), {}, false};
    if (databaseFile(context).isEmpty())  // a server that is not open: others may well work on it
        return {title, translated(u"Held"_s), {}};
    return {title, translated(u"Held"_s), translated(u"No other Control Panel can change these records"_s)};
}

HealthLine errorLine(const Context& context) {
    const QString title = translated(u"Error log"_s);
    const auto reporter = context.reporter;
    if (!reporter)
        return {title, translated(u"Not open"_s), {}, false};
    if (!reporter->logFailure().isEmpty())
        return {title, translated(u"Can not be written"_s), reporter->logFailure(), false};
    const auto& reports = reporter->reports();
    if (reports.empty())
        return {title, translated(u"No problems in this run"_s), {}};
    return {title, with(translated(u"Problems in this run: %1"_s), QString::number(reports.size())),
            with(translated(u"Newest %1"_s), momentText(reports.back().time)), false};
}

HealthLine filesLine(const Context& context) {
    const QString title = translated(u"Options and language files"_s);
    if (!context.options || !context.options->problem().isEmpty())
        return {title,
                translated(u"Options not read"_s),
                {},
                false,
                context.options ? context.options->problem() : QString()};
    const QString path = context.language ? context.language->translationPath() : QString();
    const auto document = platform::XmlDocument::create();
    const QString name = QFileInfo(path).fileName();
    if (platform::fileExists(path) && !document->load(path))
        return {title, translated(u"Language file not read"_s), name, false, document->problem()};
    return {title, translated(u"All read"_s), name};
}

/// A line that fails to be made says so in its own place.
template <class Maker>
HealthLine safely(const QString& title, Maker&& make) {
    try {
        return make();
    } catch (const platform::RuntimeError& failure) {
        return {title, translated(u"Can not be read"_s), {}, false, failure.description()};
    }
}

}  // namespace

std::vector<HealthLine> healthLines(const Context& context, const WindowHealth& window) {
    std::vector<HealthLine> lines{
        safely(translated(u"Database"_s), [&] { return databaseLine(context, window.readingOnly); }),
        safely(translated(u"Keys left"_s), [&] { return keysLine(context); }),
        safely(translated(u"Newest copy"_s), [&] { return copyLine(context); }),
        safely(translated(u"Second place for copies"_s), secondPlaceLine),
        safely(translated(u"Lock of the program"_s), [&] { return lockLine(context, window.readingOnly); }),
        errorLine(context),
        safely(translated(u"Options and language files"_s), [&] { return filesLine(context); }),
        {translated(u"Mixer"_s), window.mixer, window.mixerNote, window.mixerGood}};
    if (!window.preparations.isEmpty())
        lines.push_back({translated(u"Preparations"_s), window.preparations, window.preparationsNote,
                         window.preparationsGood});
    return lines;
}

HealthLine checkedDatabase(const Context& context, const QStringList& problems, const WindowHealth& window) {
    HealthLine line =
        safely(translated(u"Database"_s), [&] { return databaseLine(context, window.readingOnly); });
    if (problems.isEmpty()) {
        line.note = with(translated(u"Checked %1"_s), platform::timeOfDay(platform::now().time()));
        return line;
    }
    line.good = false;
    line.state = translated(u"Damaged"_s);
    line.detail = problems.first();
    return line;
}

}  // namespace sorvanto
