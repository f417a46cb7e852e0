// Drawn statements, criteria and patterns, on a file and on a server: each is refused for what it is, or does what a
// statement of the dialect may. A result set changes nothing, and no statement leaves its transaction.
#include "DataTest.h"

#include "platform/data/Transaction.h"

#include <QDir>
#include <QFile>
#include <array>
#include <random>

namespace platform {
namespace {

class DrawnStatements : public DataTest {
protected:
    /// The fuzzer's finds, whole and with something in them changed, and texts of nothing but pieces.
    QStringList drawn() {
        QStringList all;
        const QDir corpus(QString::fromUtf8(SORVANTO_SOURCE_DIR "/tests/fuzz/corpus/dialect"));
        for (const QString& name : corpus.entryList(QDir::Files, QDir::Name)) {
            QFile file(corpus.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            all << QString::fromUtf8(file.readAll());
        }
        EXPECT_GT(all.size(), 20);
        all << u"INSERT INTO Chemical (chm_Name, chm_Cost) VALUES ('Zinc', 2.5)"_s
            << u"UPDATE Chemical SET [chm_Name] = 'Zinc' WHERE ChemicalID < 9"_s << u"DELETE FROM FormChem"_s;
        const qsizetype finds = all.size();
        const int count = qEnvironmentVariableIntValue("SORVANTO_LONG") != 0 ? 20'000 : 300;
        for (int i = 0; i < count; ++i)
            all << (i % 2 == 0 ? pieced() : changed(all[below(finds)]));
        return all;
    }
    /// Of each table how many rows it has, and which tables there are.
    QString everything() const {
        QString all;
        for (const char* table : {"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs",
                                  "Options", "History", "FileIdentity"})
            all += stored(u"SELECT count(*) FROM %1"_s.arg(QLatin1String(table))) + u' ';
        return all + connection->engine().tables().join(u',') +
               stored(u"SELECT sum(chm_Cost), max(chm_Name) FROM "
                      "Chemical"_s);
    }
    static bool isRefusal(std::int32_t number) {
        const std::array known{0,
                               error::statement,
                               error::dataMismatch,
                               error::divisionByZero,
                               error::overflow,
                               error::general,
                               error::permissionDenied};
        return std::find(known.begin(), known.end(), number) != known.end();
    }
    /// What came of it; a failure of another kind is one of the test.
    template <class Action>
    bool went(const QString& statement, Action&& action) const {
        const RuntimeError failure = failureOf([&] { action(statement); });
        EXPECT_TRUE(isRefusal(failure.number()))
            << statement.toStdString() << "\n"
            << std::hex << failure.number() << ": " << failure.description().toStdString();
        return failure.number() == 0;
    }

private:
    qsizetype below(qsizetype bound) {
        return static_cast<qsizetype>(m_random() % static_cast<std::uint32_t>(bound));
    }
    const QString& piece() {
        static const QStringList pieces =
            u"SELECT|SELECT|FROM|WHERE|ORDER BY|GROUP BY|HAVING|AS|INNER JOIN|ON|UNION|INSERT INTO|VALUES|UPDATE|SET|DELETE "
            "FROM|Like|Not|And|Or|In|Is|NULL|IIf(|Count(|Sum(|Round(|Int(|Val(|(|)|)|,|*|+|-|/|\\|Mod|^|&|=|<>|<|>|;|.|"
            "Chemical|Formula|Log|[Chemical]|ChemicalID|chm_Name|[chm_Cost]|chm_AWP|Chemical.chm_Name|frm_Name|log_Date|"
            "FormulaID|T|[Any Text. (x)]|1|0|-7|2.5|1e308|99999999999|'a'|'O''Hara'|''|'%a%'|'[a-z]_'|'['|\"b\"|"
            "#1/31/2026#|#99/99/9999#|True|False|@@IDENTITY|version()|pg_class|sqlite_master|$1|?|:x|--|/*|*/|{|}|é|\u212A|"
            "BETWEEN|EXISTS|CASE|WHEN|END|LIMIT|OFFSET|RETURNING|FOR|COLLATE|::text|DISTINCT|TOP 3|DESC"_s
                .split(u'|');
        return pieces[below(pieces.size())];
    }
    QString pieced() {
        QStringList text{below(2) == 0 ? u"SELECT chm_Name FROM Chemical WHERE"_s : piece()};
        for (qsizetype left = below(9); left > 0; --left)
            text << piece();
        return text.join(u' ');
    }
    QString changed(QString text) {
        for (qsizetype left = 1 + below(3); left > 0; --left) {
            const qsizetype place = below(text.size() + 1);
            if (below(3) == 0)
                text.remove(place, 1 + below(4));
            else
                text.insert(place, below(2) == 0 ? piece() : u' ' + piece() + u' ');
        }
        return text;
    }

    std::mt19937 m_random{1};
};

TEST_F(DrawnStatements, WhatIsReadChangesNothing) {
    const QString before = everything();
    int read = 0;
    const auto open = [this](const QString& statement) { rows(statement); };
    for (const QString& text : drawn()) {
        read += went(text, open) ? 1 : 0;
        const QString search =
            u"SELECT ChemicalID, chm_Name AS [n] FROM Chemical WHERE (chm_Name Like '%1%')"_s.arg(text);
        read += went(search, open) ? 1 : 0;
        read += went(u"SELECT ChemicalID FROM Chemical WHERE (%1)"_s.arg(text), open) ? 1 : 0;
    }
    EXPECT_EQ(everything(), before);
    EXPECT_GT(read, 100) << "not all are refused";
}

TEST_F(DrawnStatements, WhatChangesStaysInItsTransaction) {
    const QString before = everything();
    int done = 0;
    for (const QString& text : drawn()) {
        Transaction takenBack(connection->engine());
        const auto execute = [this](const QString& statement) { connection->execute(statement); };
        done += went(text, execute) ? 1 : 0;
        done +=
            went(u"UPDATE Chemical SET [chm_Notes] = %1 WHERE ChemicalID = 1"_s.arg(text), execute) ? 1 : 0;
        done +=
            went(u"UPDATE Chemical SET [chm_Name] = '%1' WHERE ChemicalID = 2"_s.arg(text), execute) ? 1 : 0;
    }
    EXPECT_EQ(everything(), before);
    EXPECT_GT(done, 100) << "not all are refused";
}

}  // namespace
}  // namespace platform
