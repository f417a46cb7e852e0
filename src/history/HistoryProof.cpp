#include "history/HistoryProof.h"

#include "history/HistoryChain.h"
#include "history/HistorySeal.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::PlainValue;
using platform::Query;

/// Whether name, fields and salt were taken out because the patient was forgotten.
QString isForgotten() {
    return u"(hst_Salt IS NULL AND hst_Name IS NULL AND hst_Fields IS NULL AND %1 AND EXISTS (SELECT 1 FROM History f "
           "WHERE f.hst_Table = 'Patient' AND f.hst_What = 'forgotten' AND f.hst_Record = History.hst_Record AND "
           "f.HistoryID > History.HistoryID))"_s.arg(forgettableRows);
}

QByteArray bytesOf(const PlainValue& value) {
    return value.kind == 'n' ? QByteArray() : QByteArray(value.bytes.data(), value.bytes.size());
}

/// The engine asks for the seal before each row as it comes to it.
class ProofWithin : public HistoryProof {
public:
    explicit ProofWithin(platform::Engine& database) {
        installHistoryHash(database);
        const auto add = [&](const char* name, platform::EngineFunction function) {
            database.addFunction(name, platform::FunctionResult::OfTheMoment, std::move(function));
        };
        add("history_seal_before", [this](const std::vector<PlainValue>& values) {
            const auto text = [&](std::size_t place) { return QString::fromUtf8(bytesOf(values.at(place))); };
            return given(m_links.follow(
                {values.at(0).bytes.toLongLong(), text(1), text(2), text(3), bytesOf(values.at(4))}));
        });
        add("history_row_before", [this](const std::vector<PlainValue>&) { return given(m_links.before()); });
        m_row.emplace(database, sql(), sql());
    }

    std::optional<ProvenRow> next() override {
        if (!m_row->step())
            return std::nullopt;
        const std::int64_t seal = m_row->integer(6);
        if (seal == joinsTheRowBefore)
            m_links.join();
        return ProvenRow{m_row->integer(0),
                         m_row->value(1, asText).toString(),
                         m_row->integer(2),
                         m_row->value(3, asText).toString(),
                         m_row->value(4, asText).toString(),
                         m_row->integer(5) != 0,
                         seal != 0 && (m_row->integer(7) != 0 || m_row->integer(8) != 0)};
    }

private:
    static constexpr int joinsTheRowBefore = 2;

    static QVariant given(const QByteArray& seal) { return seal.isNull() ? QVariant() : QVariant(seal); }
    static QString sql() {
        const auto sealBehind = [](const QString& before) {
            return u"history_hash(%1)"_s.arg(sealArguments().arg(
                before, u"hst_Person"_s, u"hst_Program"_s, u"hst_Deed"_s, u"hst_Note"_s, u"hst_Digest"_s));
        };
        return u"SELECT HistoryID, hst_Table, hst_Key, hst_What, hst_When, hst_Seal IS NOT NULL, "
               "CASE hst_Seal WHEN %1 THEN 1 WHEN %2 THEN %3 ELSE 0 END, "
               "coalesce(hst_Digest = history_hash(hst_Salt, hst_Name, hst_Fields), 0), %4 "
               "FROM History ORDER BY HistoryID"_s.arg(
                   sealBehind(u"history_seal_before(HistoryID, hst_What, hst_Note, hst_Person, hst_Seal)"_s),
                   sealBehind(u"history_row_before()"_s), QString::number(joinsTheRowBefore), isForgotten());
    }

    std::optional<Query> m_row;
};

/// In portions: a long history is never in memory as a whole.
class ProofHere : public HistoryProof {
public:
    explicit ProofHere(platform::Engine& database) : m_row(database, sql(database.words()), {}) {}

    std::optional<ProvenRow> next() override {
        if (!step())
            return std::nullopt;
        const QByteArray digest = bytes(DigestColumn), seal = bytes(SealColumn);
        m_number = m_row.integer(Number);
        const QByteArray before = m_links.follow({m_number, text(What), text(Note), text(Person), seal});
        const bool isDigest =
            digest == historyHash({blob(bytes(SaltColumn)), plain(NameColumn, 't'), plain(Fields, 't')}) ||
            m_row.integer(Forgotten) != 0;
        const bool follows = seal == sealBehind(before);
        const bool joins = !follows && m_links.isOfBench() && seal == sealBehind(m_links.before());
        if (joins)
            m_links.join();
        return ProvenRow{m_number,
                         text(Table),
                         m_row.integer(Key),
                         text(What),
                         text(When),
                         !seal.isEmpty(),
                         isDigest && (follows || joins)};
    }

private:
    enum Column {
        Number,
        When,
        Zone,
        Table,
        Key,
        Record,
        What,
        Person,
        Program,
        Deed,
        Note,
        NameColumn,
        Fields,
        DigestColumn,
        SealColumn,
        SaltColumn,
        Forgotten
    };
    static constexpr int portion = 1000;

    static QString sql(const platform::EngineWords& words) {
        QStringList bytes;
        for (const char* column : {"hst_Digest", "hst_Seal", "hst_Salt"})
            bytes << words.hex(QLatin1String(column));
        return u"SELECT HistoryID, hst_When, hst_Zone, hst_Table, hst_Key, hst_Record, hst_What, hst_Person, "
               "hst_Program, hst_Deed, hst_Note, hst_Name, hst_Fields, %1, %2 FROM History WHERE HistoryID > ? "
               "ORDER BY HistoryID LIMIT %3"_s.arg(bytes.join(u", "_s), isForgotten())
                   .arg(portion);
    }
    static bool isWhole(Column column) {
        return column == Number || column == Zone || column == Key || column == Record;
    }
    static PlainValue blob(const QByteArray& bytes) {
        return bytes.isNull() ? PlainValue() : PlainValue{'b', bytes};
    }

    /// What the seal of this row has to be behind that one.
    QByteArray sealBehind(const QByteArray& before) const {
        std::vector<PlainValue> sealed{blob(before)};
        for (const Column column :
             {Number, When, Zone, Table, Key, Record, What, Person, Program, Deed, Note})
            sealed.push_back(plain(column, isWhole(column) ? 'i' : 't'));
        sealed.push_back(blob(bytes(DigestColumn)));
        return historyHash(sealed);
    }
    bool step() {
        if (m_left > 0 && m_row.step()) {
            --m_left;
            return true;
        }
        if (m_left > 0)
            return false;  // the last portion was not full
        m_row.reset();
        m_row.bind(1, qint64{m_number});
        m_left = portion - 1;
        return m_row.step();
    }
    QString text(Column column) const { return m_row.value(column, asText).toString(); }
    /// Null where nothing stands there.
    QByteArray bytes(Column column) const {
        const QVariant digits = m_row.value(column, asText);
        return digits.isValid() ? QByteArray::fromHex(digits.toString().toLatin1()) : QByteArray();
    }
    PlainValue plain(Column column, char kind) const {
        const QVariant value = m_row.value(column, asText);
        return value.isValid() ? PlainValue{kind, value.toString().toUtf8()} : PlainValue();
    }

    Query m_row;
    std::int64_t m_number = 0;
    int m_left = 0;
};

}  // namespace

std::unique_ptr<HistoryProof> proveHistory(platform::Engine& database) {
    if (database.isServer())
        return std::make_unique<ProofHere>(database);
    return std::make_unique<ProofWithin>(database);
}

}  // namespace sorvanto
