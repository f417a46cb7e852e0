#include "trace/TraceFile.h"

#include "platform/basic/Folding.h"
#include "trace/TraceQuestion.h"

#include <iterator>
#include <limits>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// Each different value of a column once, by one look into its index for each.
constexpr auto differentOnes =
    "WITH RECURSIVE found(value) AS (SELECT min(%2) FROM %1 WHERE %2 > '' UNION ALL "
    "SELECT (SELECT min(%2) FROM %1 WHERE %2 > found.value) FROM found WHERE found.value IS NOT NULL) "
    "SELECT value FROM found WHERE value IS NOT NULL"_L1;

/// One ingredient a row, its form and supplier as they were written last.
constexpr auto loggedIngredients =
    "SELECT lch_Name, lch_NDC, lch_Lot, lch_Form, lch_Supplier FROM LogChem WHERE LogChemID IN (SELECT max(LogChemID) "
    "FROM LogChem JOIN Log USING (LogID) WHERE %1 AND %2 GROUP BY lch_Name, lch_NDC, lch_Lot) ORDER BY LogChemID"_L1;
constexpr auto chemicals =
    "SELECT chm_Name, chm_NDC, chm_Lot, chm_Form, chm_Supplier FROM Chemical WHERE %1"_L1;

/// Whether a column holds a text, nothing being an empty one. A column compares as it was declared, an expression of it
/// would letter by letter.
constexpr auto holds = "(%1 = %2 OR (%1 IS NULL AND %2 = ''))"_L1;
/// The same in two conditions, of which each can be looked up in an index.
constexpr QLatin1StringView holdsEither[] = {"%1 = %2"_L1, "(%1 IS NULL AND %2 = '')"_L1};

// How many of a list go into one statement to a file, such that each takes some milliseconds at most.
constexpr int keysAtOnce = 2'000, lotsAtOnce = 500, ingredientsAtOnce = 250, batchesAtOnce = 1'000;
/// Of each of them there may be lines in every batch.
constexpr int namesAtOnce = 4;

QString condition(QLatin1StringView form, const QString& column, QLatin1StringView value) {
    return QString(form).replace("%1"_L1, column).replace("%2"_L1, value);
}

/// What is selected of the lines or chemicals that are one of the listed ingredients. selected: with the table, joined to
/// "wanted". prefix: of the table's columns. By lot and name together an index finds the few among many rows of a name.
QString matching(const QString& selected, const QString& prefix, bool byLotToo) {
    QStringList parts;
    for (const QLatin1StringView ofLot : holdsEither) {
        for (const QLatin1StringView ofName : holdsEither)
            parts << u"SELECT %1 WHERE "_s.arg(selected) +
                         QStringList{condition(byLotToo ? ofLot : holds, prefix + u"Lot"_s, "one"_L1),
                                     condition(ofName, prefix + u"Name"_s, "two"_L1),
                                     condition(holds, prefix + u"NDC"_s, "three"_L1)}
                             .join(u" AND "_s);
        if (!byLotToo)
            break;
    }
    return parts.join(u" UNION ALL "_s);
}

QJsonArray array(const Ingredient& ingredient) { return {ingredient.lot, ingredient.name, ingredient.ndc}; }
qint64 array(std::int64_t key) { return key; }
const QString& array(const QString& text) { return text; }

TracedBatch batchIn(const TraceQuestion& rows, int file) {
    return {.key = {file, rows.key(0)},
            .date = rows.date(1),
            .formula = rows.text(2),
            .strength = rows.text(3),
            .lot = rows.text(4),
            .quantity = static_cast<int>(rows.key(5)),
            .units = rows.text(6),
            .initials = rows.text(7),
            .verified = rows.text(8),
            .base = {},
            .hasNoLines = rows.key(9) == 0,
            .lacksLines = false};
}

}  // namespace

TraceFile::TraceFile(platform::ConnectionPtr connection, int number, std::shared_ptr<TracePace> pace)
    : m_connection(std::move(connection)), m_number(number), m_pace(std::move(pace)),
      m_own(number == 0 ? u"1 = 1"_s
                        : u"Log.LogID NOT IN (SELECT kmp_Old FROM KeyMap WHERE kmp_Table = 'Log')"_s) {}

std::unique_ptr<platform::EngineLook> TraceFile::oneMoment() const {
    return engineOf(m_connection).beginLook();
}

const platform::EngineWords& TraceFile::words() const { return engineOf(m_connection).words(); }

TraceQuestion TraceFile::ask(const QString& sql, const QVariantList& values) const {
    return {m_connection, *m_pace, sql, values};
}

template <typename List>
QStringList TraceFile::bound(const List& list, int atOnce) const {
    const bool whole = engineOf(m_connection).isServer();
    QStringList values;
    QJsonArray piece;
    for (const auto& one : list) {
        m_pace->step();
        piece.append(array(one));
        if (!whole && piece.size() == atOnce)
            values << boundList(std::exchange(piece, {}));
    }
    if (!piece.isEmpty())
        values << boundList(piece);
    return values;
}

QStringList TraceFile::bound(const Keys& keys) const { return bound(keys, keysAtOnce); }

std::int64_t TraceFile::batchCount() const {
    TraceQuestion question = ask(u"SELECT count(*) FROM Log WHERE "_s + m_own);
    return question.next() ? question.key(0) : 0;
}

QStringList TraceFile::ingredientLots() const {
    QStringList lots = ask(differentOnes.arg("LogChem"_L1, "lch_Lot"_L1)).texts();
    lots += ask(differentOnes.arg("Chemical"_L1, "chm_Lot"_L1)).texts();
    return lots;
}

QStringList TraceFile::batchLots() const {
    return ask(u"SELECT log_Lot FROM Log WHERE log_Lot > '' AND "_s + m_own).texts();
}

std::vector<Ingredient> TraceFile::ingredients(QLatin1StringView column, const QStringList& texts) const {
    const QString isOne = u"%1%2 IN (SELECT value FROM %3 AS wanted)"_s;
    const auto question = [&](const QString& sql) { return ask(sql); };
    std::vector<TraceQuestion> questions;
    const QString wanted = words().listedTexts(u"?1"_s);
    questions.push_back(
        question(loggedIngredients.arg(isOne.arg(u"lch_"_s, QString(column), wanted), m_own)));
    if (m_number == 0)
        questions.push_back(question(chemicals.arg(isOne.arg(u"chm_"_s, QString(column), wanted))));
    std::vector<Ingredient> all;
    for (const QString& piece : bound(texts, namesAtOnce)) {
        for (TraceQuestion& rows : questions) {
            rows.ask({piece});
            while (rows.next())
                all.push_back({rows.text(0), rows.text(1), rows.text(2), rows.text(3), rows.text(4)});
        }
    }
    return all;
}

std::vector<Ingredient> TraceFile::ingredientsOfLot(const QString& lot) const {
    return ingredients("Lot"_L1, {lot});
}

std::vector<Ingredient> TraceFile::ingredientsOfNdc(const QString& ndc) const {
    return ingredients("NDC"_L1, {ndc});
}

QStringList TraceFile::differentNames() const {
    QStringList names = ask(differentOnes.arg("LogChem"_L1, "lch_Name"_L1)).texts();
    if (m_number == 0)
        names += ask(differentOnes.arg("Chemical"_L1, "chm_Name"_L1)).texts();
    names.removeDuplicates();
    return names;
}

std::vector<Ingredient> TraceFile::ingredientsNamed(const QString& text) const {
    const QString wanted = platform::folded(text);
    QStringList names = differentNames();
    names.removeIf([&](const QString& name) {
        m_pace->step();
        return !platform::folded(name).contains(wanted);
    });
    return names.isEmpty() ? std::vector<Ingredient>() : ingredients("Name"_L1, names);
}

// No lot is stored as an empty text or not at all.
TraceFile::Keys TraceFile::batchesWith(const std::vector<Ingredient>& ingredients) const {
    if (ingredients.empty())
        return {};
    TraceQuestion lines = ask(matching(
        u"LogID FROM %1 AS wanted CROSS JOIN LogChem JOIN (SELECT LogID FROM Log WHERE %2) AS Own USING (LogID)"_s
            .arg(words().listedTriples(u"?1"_s), m_own),
        u"lch_"_s, true));
    Keys all;
    for (const QString& piece : bound(ingredients, ingredientsAtOnce)) {
        lines.ask({piece});
        all.merge(lines.keys());
    }
    return all;
}

std::map<std::int64_t, QString> TraceFile::batchesWithLots(const QStringList& lots) const {
    TraceQuestion rows = ask(
        u"SELECT LogID, value FROM %1 AS wanted CROSS JOIN LogChem JOIN Log USING (LogID) WHERE lch_Lot = value "
        "AND %2"_s.arg(words().listedTexts(u"?1"_s), m_own));
    std::map<std::int64_t, QString> all;
    for (const QString& piece : bound(lots, lotsAtOnce)) {
        rows.ask({piece});
        while (rows.next())
            all.emplace(rows.key(0), rows.text(1));
    }
    return all;
}

TraceFile::Keys TraceFile::batchesMadeAs(const QString& lot) const {
    return ask(u"SELECT LogID FROM Log WHERE log_Lot = ? AND "_s + m_own, {lot}).keys();
}

std::vector<std::pair<std::int64_t, QString>> TraceFile::batchesMadeAs(const QStringList& lots) const {
    std::vector<std::pair<std::int64_t, QString>> all;
    TraceQuestion rows =
        ask(u"SELECT LogID, log_Lot FROM Log WHERE log_Lot IN (SELECT value FROM %1 AS wanted) AND %2 "
            "ORDER BY LogID"_s.arg(words().listedTexts(u"?1"_s), m_own),
            {boundList(QJsonArray::fromStringList(lots))});
    while (rows.next())
        all.emplace_back(rows.key(0), rows.text(1));
    return all;
}

std::vector<std::pair<std::int64_t, QString>> TraceFile::lotsOf(const Keys& batches) const {
    std::vector<std::pair<std::int64_t, QString>> all;
    TraceQuestion rows = ask(
        u"SELECT LogID, log_Lot FROM Log WHERE log_Lot > '' AND LogID IN (SELECT value FROM %1 AS wanted) "
        "ORDER BY LogID"_s.arg(words().listedNumbers(u"?1"_s)));
    for (const QString& piece : bound(batches)) {
        rows.ask({piece});
        while (rows.next())
            all.emplace_back(rows.key(0), rows.text(1));
    }
    return all;
}

// Formulas keep their keys in every archive.
TraceFile::Keys TraceFile::batchesMadeOf(std::int64_t formula) const {
    return ask(u"SELECT LogID FROM Log WHERE FormulaID = ? AND "_s + m_own,
               {QVariant::fromValue<qint64>(formula)})
        .keys();
}

std::vector<std::pair<std::int64_t, std::int64_t>> TraceFile::spans() const {
    using Limits = std::numeric_limits<std::int64_t>;
    if (engineOf(m_connection).isServer())
        return {{0, Limits::max()}};
    TraceQuestion bounds = ask(u"SELECT min(LogID), max(LogID) FROM Log"_s);
    std::vector<std::pair<std::int64_t, std::int64_t>> all;
    if (bounds.next()) {
        for (std::int64_t first = bounds.key(0); first <= bounds.key(1); first += batchesAtOnce)
            all.emplace_back(first, first + batchesAtOnce - 1);
    }
    return all;
}

TraceFile::Keys TraceFile::batchesWithoutLines() const {
    TraceQuestion rows =
        ask(u"SELECT LogID FROM Log WHERE LogID BETWEEN ? AND ? AND NOT EXISTS (SELECT 1 FROM LogChem WHERE "
            "LogChem.LogID = Log.LogID) AND "_s +
            m_own);
    Keys all;
    for (const auto& [first, last] : spans()) {
        rows.ask({QVariant::fromValue<qint64>(first), QVariant::fromValue<qint64>(last)});
        all.merge(rows.keys());
    }
    return all;
}

// The batch's price is exact, each line's is that of a quantity of three decimals, to two decimals.
bool TraceFile::lookForLackingLines() const {
    const std::int64_t state = m_connection->changeState();
    if (m_lackingAsOf == state)
        return false;
    const QString atMost =
        u"sum(CASE WHEN lch_QTY > 0 AND %1 IS NOT NULL THEN %1 + 0.005 + 0.0005 * (abs(%1) + 0.005) / lch_QTY "
        "ELSE 1e15 END) AS %2"_s;
    TraceQuestion rows = ask(
        u"SELECT LogID FROM Log JOIN (SELECT LogID AS Batch, %1, %2 FROM LogChem WHERE LogID BETWEEN ?1 AND ?2 "
        "GROUP BY LogID) AS Sums ON Batch = LogID WHERE (log_Cost > Cost + 0.0001 * (1 + abs(log_Quantity)) OR "
        "log_AWP > AWP + 0.0001 * (1 + abs(log_Quantity))) AND %3"_s.arg(
            atMost.arg(u"lch_Cost"_s, u"Cost"_s), atMost.arg(u"lch_AWP"_s, u"AWP"_s), m_own));
    Keys lacking;
    for (const auto& [first, last] : spans()) {
        m_pace->turn();
        rows.ask({QVariant::fromValue<qint64>(first), QVariant::fromValue<qint64>(last)});
        lacking.merge(rows.keys());
    }
    m_lacking = std::move(lacking);
    m_lackingAsOf = state;
    return true;
}

std::vector<TracedBatch> TraceFile::batches(const Keys& keys) const {
    if (keys.empty())
        return {};
    TraceQuestion rows = ask(
        u"SELECT LogID, log_Date, log_Name, log_Strength, log_Lot, log_Quantity, log_Units, log_Initials, "
        "log_Verified, EXISTS (SELECT 1 FROM LogChem WHERE LogChem.LogID = Log.LogID) FROM Log "
        "WHERE LogID IN (SELECT value FROM %1 AS wanted)"_s.arg(words().listedNumbers(u"?1"_s)));
    std::vector<TracedBatch> all;
    for (const QString& piece : bound(keys)) {
        rows.ask({piece});
        while (rows.next())
            all.push_back(batchIn(rows, m_number));
    }
    return all;
}

std::map<std::int64_t, std::vector<UsedIngredient>> TraceFile::linesOf(const Keys& batches) const {
    TraceQuestion rows = ask(
        u"SELECT LogID, lch_Name, lch_NDC, lch_Lot, lch_Form, lch_Supplier, lch_QTY, lch_Units FROM LogChem "
        "WHERE LogID IN (SELECT value FROM %1 AS wanted) ORDER BY LogID, LogChemID"_s.arg(
            words().listedNumbers(u"?1"_s)));
    std::map<std::int64_t, std::vector<UsedIngredient>> all;
    for (const QString& piece : bound(batches)) {
        rows.ask({piece});
        while (rows.next())
            all[rows.key(0)].push_back(
                {{rows.text(1), rows.text(2), rows.text(3), rows.text(4), rows.text(5)},
                 rows.real(6),
                 rows.text(7),
                 {}});
    }
    return all;
}

TraceFile::Keys TraceFile::chemicalsLike(const std::vector<Ingredient>& ingredients) const {
    TraceQuestion rows = ask(
        matching(u"ChemicalID FROM %1 AS wanted CROSS JOIN Chemical"_s.arg(words().listedTriples(u"?1"_s)),
                 u"chm_"_s, false));
    Keys keys;
    for (const QString& piece : bound(ingredients, ingredientsAtOnce)) {
        rows.ask({piece});
        keys.merge(rows.keys());
    }
    return keys;
}

}  // namespace sorvanto
