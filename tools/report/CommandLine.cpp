// The reports' names, what each of them takes, and the reading of numbers and dates.
#include "report/CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <initializer_list>
#include <limits>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using Names = std::initializer_list<const char*>;

/// A report's name, the options that it needs, all of them, those of which it takes exactly one, and those that may
/// be there.
struct Entry {
    const char* name;
    Paper paper;
    Names needs;
    Names oneOf = {};
    Names may = {};
};

constexpr int papers = 9;

const std::array<Entry, papers>& entries() {
    static const std::array<Entry, papers> all{{
        {"worksheet", Paper::Worksheet, {"formula", "quantity"}},
        {"formula-log", Paper::FormulaLog, {"log"}},
        {"batch-labels", Paper::BatchLabels, {"log", "labels", "position"}},
        {"log-report", Paper::LogReport, {"formula", "from", "to"}},
        {"jar-usage", Paper::JarUsage, {"from", "to"}},
        {"rx-labels", Paper::RxLabels, {"rx", "labels", "position"}},
        {"patient", Paper::Patient, {"patient", "from", "to"}},
        {"chemicals", Paper::Chemicals, {}},
        {"recall", Paper::Recall, {}, {"lot", "ndc", "name", "batch", "patient"}, {"from", "to"}},
    }};
    return all;
}

constexpr Names common{"database", "pdf", "xls", "language", "options", "folder"};
constexpr Names particular{"formula", "log", "rx",  "patient", "quantity", "labels", "position",
                           "from",    "to",  "lot", "ndc",     "name",     "batch"};
constexpr int positions = 30;

void parse(QCommandLineParser& parser, const QStringList& arguments) {
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    for (const auto& names : {common, particular}) {
        for (const char* name : names)
            parser.addOption({QLatin1String(name), QString(), u"value"_s});
    }
    if (!parser.parse(QStringList{QString()} + arguments))
        throw WrongUse(parser.errorText());
}

const Entry& entryOf(const QStringList& words) {
    if (words.isEmpty())
        throw WrongUse(u"No report is named."_s);
    if (words.size() > 1)
        throw WrongUse(u"One report at a time: \"%1\" is too much."_s.arg(words.at(1)));
    const auto found = std::find_if(entries().begin(), entries().end(), [&](const Entry& entry) {
        return words.front() == QLatin1String(entry.name);
    });
    if (found == entries().end())
        throw WrongUse(u"There is no report \"%1\"."_s.arg(words.front()));
    return *found;
}

/// The one value of an option; empty when the option isn't there.
QString valueOf(const QCommandLineParser& parser, const char* name) {
    const QStringList values = parser.values(QLatin1String(name));
    if (values.size() > 1)
        throw WrongUse(u"--%1 is given more than once."_s.arg(QLatin1String(name)));
    if (!values.isEmpty() && values.front().isEmpty())
        throw WrongUse(u"--%1 has no value."_s.arg(QLatin1String(name)));
    return values.value(0);
}

void checkOptions(const QCommandLineParser& parser, const Entry& entry) {
    const auto isIn = [](const Names& names, const char* name) {
        return std::any_of(names.begin(), names.end(),
                           [&](const char* other) { return qstrcmp(other, name) == 0; });
    };
    QStringList chosen, choice;
    for (const char* name : particular) {
        const bool needed = isIn(entry.needs, name), one = isIn(entry.oneOf, name);
        const bool given = !valueOf(parser, name).isEmpty();
        if (needed && !given)
            throw WrongUse(u"%1 needs --%2."_s.arg(QLatin1String(entry.name), QLatin1String(name)));
        if (given && !needed && !one && !isIn(entry.may, name))
            throw WrongUse(u"%1 doesn't take --%2."_s.arg(QLatin1String(entry.name), QLatin1String(name)));
        if (one)
            choice << u"--"_s + QLatin1String(name);
        if (one && given)
            chosen << choice.back();
    }
    if (!choice.isEmpty() && chosen.size() != 1)
        throw WrongUse(u"%1 takes exactly one of %2."_s.arg(QLatin1String(entry.name), choice.join(u", "_s)));
}

/// A whole number of plain digits from 1 to most; 0 when the option isn't there.
std::int16_t numberOf(const QCommandLineParser& parser, const char* name,
                      int most = std::numeric_limits<std::int16_t>::max()) {
    const QString text = valueOf(parser, name);
    if (text.isEmpty())
        return 0;
    const bool digits = std::all_of(
        text.begin(), text.end(), [](QChar character) { return character >= '0'_L1 && character <= '9'_L1; });
    bool fits = false;
    const int number = text.toInt(&fits);
    if (!digits || !fits || number < 1 || number > most)
        throw WrongUse(u"--%1 takes a whole number from 1 to %2, not \"%3\"."_s.arg(QLatin1String(name))
                           .arg(most)
                           .arg(text));
    return static_cast<std::int16_t>(number);
}

/// "2026-03-07" or "2026-03-07T14:05", in the time that the records have.
QDateTime dateOf(const QCommandLineParser& parser, const char* name) {
    const QString text = valueOf(parser, name);
    if (text.isEmpty())
        return {};
    for (const char* picture : {"yyyy-MM-dd", "yyyy-MM-ddTHH:mm", "yyyy-MM-ddTHH:mm:ss"}) {
        QDateTime date = QDateTime::fromString(text, QLatin1String(picture));
        date.setTimeSpec(Qt::UTC);
        if (date.isValid() && date.date().year() >= 1900)
            return date;
    }
    throw WrongUse(u"--%1 takes a date from 1900 on as 2026-03-07 or 2026-03-07T14:05, not \"%2\"."_s.arg(
        QLatin1String(name), text));
}

int languageOf(const QCommandLineParser& parser) {
    const QString name = valueOf(parser, "language");
    if (name.isEmpty())
        return -1;
    const auto number = languageNames().indexOf(name);
    if (number < 0)
        throw WrongUse(u"--language takes one of %1, not \"%2\"."_s.arg(languageNames().join(u", "_s), name));
    return static_cast<int>(number);
}

void checkOutputs(const Order& order) {
    if (order.database.isEmpty())
        throw WrongUse(u"--database is missing."_s);
    if (order.pdf.isEmpty() && order.xls.isEmpty())
        throw WrongUse(u"Nothing to write: give --pdf, --xls or both."_s);
    const auto place = [](const QString& path) { return QFileInfo(path).absoluteFilePath(); };
    const QStringList files{place(order.database), place(order.pdf), place(order.xls)};
    if ((!order.pdf.isEmpty() && !order.xls.isEmpty() && files.at(1) == files.at(2)) ||
        (!order.pdf.isEmpty() && files.at(0) == files.at(1)) ||
        (!order.xls.isEmpty() && files.at(0) == files.at(2)))
        throw WrongUse(u"--database, --pdf and --xls must be different files."_s);
}

}  // namespace

const QStringList& languageNames() {
    static const QStringList names{u"English"_s, u"Spanish"_s,    u"German"_s,  u"French"_s,
                                   u"Russian"_s, u"Portuguese"_s, u"Italian"_s, u"Swiss"_s};
    return names;
}

bool asksForHelp(const QStringList& arguments) {
    return arguments.contains(u"--help"_s) || arguments.contains(u"-h"_s);
}

Order readOrder(const QStringList& arguments) {
    QCommandLineParser parser;
    parse(parser, arguments);
    const Entry& entry = entryOf(parser.positionalArguments());
    checkOptions(parser, entry);
    Order order;
    order.paper = entry.paper;
    order.database = valueOf(parser, "database");
    order.pdf = valueOf(parser, "pdf");
    order.xls = valueOf(parser, "xls");
    order.options = valueOf(parser, "options");
    order.folder = valueOf(parser, "folder");
    order.language = languageOf(parser);
    for (const char* name : {"formula", "log", "rx", "patient"})
        order.key = std::max(order.key, numberOf(parser, name));
    order.quantity = numberOf(parser, "quantity");
    order.labels = numberOf(parser, "labels");
    order.position = numberOf(parser, "position", positions);
    order.begin = dateOf(parser, "from");
    order.end = dateOf(parser, "to");
    order.lot = valueOf(parser, "lot");
    order.ndc = valueOf(parser, "ndc");
    order.name = valueOf(parser, "name");
    order.batch = valueOf(parser, "batch");
    if (order.begin.isValid() && order.end.isValid() && order.end < order.begin)
        throw WrongUse(u"--to lies before --from."_s);
    checkOutputs(order);
    return order;
}

QString usage() {
    return u"Reports of the Sorvanto Control Panel as files, without a window.\n"
           "\n"
           "  sorvanto-report NAME --database FILE [--pdf OUT.pdf] [--xls OUT.xls] ...\n"
           "\n"
           "In the place of FILE can stand the address of a server, as the program's options name it:\n"
           "postgresql://bench@server/sorvanto. Its password is that of ~/.pgpass, never one of the address.\n"
           "What is read is of one moment, whatever benches change meanwhile.\n"
           "\n"
           "NAME is one of\n"
           "  worksheet     --formula KEY --quantity N\n"
           "  formula-log   --log KEY\n"
           "  batch-labels  --log KEY --labels N --position P\n"
           "  log-report    --formula KEY --from DATE --to DATE\n"
           "  jar-usage     --from DATE --to DATE\n"
           "  rx-labels     --rx KEY --labels N --position P\n"
           "  patient       --patient KEY --from DATE --to DATE\n"
           "  chemicals\n"
           "  recall        one of --lot LOT, --ndc NDC, --name TEXT (chemicals), --batch LOT and --patient KEY;\n"
           "                --from DATE and --to DATE bound the batches, both days included\n"
           "\n"
           "KEY is the number of the record; quantity and labels go from 1 to 32767. Positions go from 1 to 30,\n"
           "row by row. A DATE is 2026-03-07, or 2026-03-07T14:05; a range ends at 0:00 of its last date.\n"
           "\n"
           "  --language L   %1;\n"
           "                 else that of the options\n"
           "  --options F    an options.xml with the pharmacy and the currency; else that of the program's\n"
           "                 folder. The language files lie beside it, or in that folder.\n"
           "  --folder DIR   the program's folder; else the one that the program itself would take\n"
           "                 (sorvanto --help)\n"
           "  --version      the version, and nothing else\n"
           "\n"
           "Numbers, dates and money have the customs of LC_ALL, LC_NUMERIC, LC_TIME, LC_MONETARY and LANG.\n"
           "Files are written whole or not at all, over existing ones. Exit code 0: done. 1: it could not be\n"
           "done, or there are no records. 2: the command line is wrong.\n"_s.arg(
               languageNames().join(u", "_s));
}

}  // namespace sorvanto
