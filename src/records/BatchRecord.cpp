#include "records/BatchRecord.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"

#include <QLocale>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::ColumnType;
using platform::Connection;
using platform::FieldKind;
using platform::Query;

constexpr std::array logColumns{"FormulaID",    "log_Name",     "log_Strength", "log_Desc",    "log_Units",
                                "log_FormType", "log_Quantity", "log_JarSize",  "log_NDC",     "log_Date",
                                "log_Lot",      "log_Initials", "log_Verified", "log_Results", "log_Version",
                                "log_AWP",      "log_Cost",     "log_Notes",    "log_Mix"};

struct LineColumn {
    const char* column;
    const char* source;  ///< of a formula's lines
};
constexpr std::array lineColumns{
    LineColumn{"ChemicalID", "ChemicalID"}, LineColumn{"lch_Name", "chm_Name"},
    LineColumn{"lch_Units", "chm_Units"},   LineColumn{"lch_Lot", "chm_Lot"},
    LineColumn{"lch_NDC", "chm_NDC"},       LineColumn{"lch_Cost", "chm_Cost"},
    LineColumn{"lch_AWP", "chm_AWP"},       LineColumn{"lch_Supplier", "chm_Supplier"},
    LineColumn{"lch_Form", "chm_Form"},     LineColumn{"lch_GUID", "chm_GUID"},
    LineColumn{"lch_QTY", "fch_Qty"}};

ColumnType typeOf(const Connection& connection, const QString& table, const char* column) {
    return ColumnType::fromDeclaration(connection.declaredType(table, QLatin1String(column)));
}

/// A value of a column's type as text that reads back as the same value.
QJsonValue stored(const QVariant& value) {
    if (!value.isValid())
        return QJsonValue::Null;
    const int type = value.userType();
    if (type == qMetaTypeId<platform::Currency>())
        return value.value<platform::Currency>().toText();
    if (type == QMetaType::QDateTime)
        return platform::storedDate(value.toDateTime());
    if (type == QMetaType::Double)
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    return value.toString();
}

template <class Columns, class Name>
QString listOf(const Columns& columns, Name name) {
    QStringList names;
    for (const auto& column : columns)
        names << QLatin1String(name(column));
    return names.join(u", "_s);
}

QJsonObject logRow(const Connection& connection, const Query& found, int first) {
    QJsonObject row;
    for (int i = 0; i < static_cast<int>(logColumns.size()); ++i) {
        const char* column = logColumns[static_cast<std::size_t>(i)];
        row.insert(QLatin1String(column),
                   stored(found.value(first + i, typeOf(connection, u"Log"_s, column))));
    }
    return row;
}

QString logList() {
    return listOf(logColumns, [](const char* name) { return name; });
}

QString lineList() {
    return listOf(lineColumns, [](const LineColumn& line) { return line.column; });
}

QJsonArray storedLines(const Connection& connection, std::int64_t key) {
    Query found(connection.engine(),
                u"SELECT %1 FROM LogChem WHERE LogID = ? ORDER BY LogChemID"_s.arg(lineList()), {});
    found.bind(1, qint64{key});
    QJsonArray lines;
    while (found.step()) {
        QJsonObject line;
        for (int i = 0; i < static_cast<int>(lineColumns.size()); ++i) {
            const char* column = lineColumns[static_cast<std::size_t>(i)].column;
            line.insert(QLatin1String(column),
                        stored(found.value(i, typeOf(connection, u"LogChem"_s, column))));
        }
        lines.append(line);
    }
    return lines;
}

/// For binding: the engine makes of texts what their columns want, but for keys and fractions.
QVariant bound(const QJsonValue& value, const ColumnType& type) {
    if (value.isNull() || value.isUndefined())
        return {};
    return type.convert(value.toString());
}

}  // namespace

BatchRows rowsToBeWritten(const Connection& connection, const LogColumns& columns,
                          platform::Recordset* lines) {
    BatchRows batch;
    for (const auto& [column, text] : columns)
        batch.row.insert(QLatin1String(column),
                         stored(typeOf(connection, u"Log"_s, column).convert(QVariant(text))));
    if (!lines || lines->recordCount() == 0)
        return batch;
    for (const LineColumn& line : lineColumns) {
        if (!lines->hasField(QLatin1String(line.source)))
            return {};
    }
    for (lines->moveFirst(); !lines->eof(); lines->moveNext()) {
        QJsonObject taken;
        for (const LineColumn& line : lineColumns)
            taken.insert(QLatin1String(line.column),
                         stored(typeOf(connection, u"LogChem"_s, line.column)
                                    .convert(lines->value(QLatin1String(line.source)))));
        batch.lines.append(taken);
    }
    return batch;
}

BatchRows storedBatch(const Connection& connection, std::int64_t key) {
    Query found(connection.engine(), u"SELECT %1 FROM Log WHERE LogID = ?"_s.arg(logList()), {});
    found.bind(1, qint64{key});
    if (!found.step())
        return {};
    return {logRow(connection, found, 0), storedLines(connection, key)};
}

std::vector<std::int64_t> rowsOfBatch(const Connection& connection, const BatchRows& batch) {
    Query found(connection.engine(),
                u"SELECT LogID, %1 FROM Log WHERE log_Lot = ? ORDER BY LogID"_s.arg(logList()), {});
    found.bind(1, batch.lot());
    std::vector<std::int64_t> equal;
    std::vector<std::int64_t> changed;
    while (found.step()) {
        const BatchRows row{logRow(connection, found, 1), {}};
        if (row.row == batch.row)
            equal.push_back(found.integer(0));
        else if (row.isSameBatch(batch))
            changed.push_back(found.integer(0));
    }
    return equal.empty() ? changed : equal;
}

void addLines(const Connection& connection, std::int64_t key, const QJsonArray& lines) {
    const QString statement = u"INSERT INTO LogChem (LogID, %1) VALUES (?%2)"_s.arg(
        lineList(), u", ?"_s.repeated(static_cast<qsizetype>(lineColumns.size())));
    platform::Transaction whole(connection.engine(), statement);
    for (const auto& line : lines) {
        Query added(connection.engine(), statement, statement);
        added.bind(1, qint64{key});
        int parameter = 1;
        for (const LineColumn& column : lineColumns)
            added.bind(++parameter, bound(line.toObject().value(QLatin1String(column.column)),
                                          typeOf(connection, u"LogChem"_s, column.column)));
        added.step();
    }
    whole.commit();
}

}  // namespace sorvanto
