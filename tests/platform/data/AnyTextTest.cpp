// Whatever is handed in as a statement is answered or refused, and a text that reads changes nothing.
#include "DataTest.h"
#include "platform/data/Transaction.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

namespace platform {
namespace {

class AnyTextTest : public DataTest {
protected:
    static QStringList seeds() {
        QStringList texts{
            u"SELECT chm_Name & '1', chm_Cost/2 FROM Chemical WHERE chm_Name Like '%a[b-c]_'"_s,
            u"UPDATE Chemical SET chm_Cost = chm_Cost * 2, chm_Lot = 'x' WHERE ChemicalID < 3"_s,
            u"INSERT INTO Patient (pat_LName, pat_BDay) VALUES ('Reed', #1/2/1970#)"_s,
            u"DELETE FROM RXs WHERE rxs_Date > #3/7/2026# Or IIf(rxs_QTY > 2, True, False)"_s,
            u"SELECT Round(Avg(log_Cost), 2), Max(log_Date) FROM Log GROUP BY FormulaID"_s};
        const QDir corpus(QStringLiteral(SORVANTO_SOURCE_DIR) + u"/tests/fuzz/corpus/dialect"_s);
        for (const QString& name : corpus.entryList(QDir::Files, QDir::Name)) {
            QFile file(corpus.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                texts << QString::fromUtf8(file.readAll());
        }
        return texts;
    }
    /// Pieces of two texts, with a sign that means something put in.
    static QString mixed(QRandomGenerator& random, const QStringList& texts) {
        static const QString signs = u"'\"[](){}#;,.%_!-+*/\\^&=<>?$@:~ \n0eNS\u00e9"_s;
        const auto any = [&] { return texts.at(random.bounded(static_cast<int>(texts.size()))); };
        const QString one = any(), other = any();
        QString text = one.left(random.bounded(static_cast<int>(one.size()) + 1)) +
                       other.mid(random.bounded(static_cast<int>(other.size()) + 1));
        for (int left = random.bounded(3); left > 0; --left)
            text.insert(random.bounded(static_cast<int>(text.size()) + 1),
                        signs.at(random.bounded(static_cast<int>(signs.size()))));
        return text;
    }
    QString everything() const {
        QString all;
        for (const QString& table : connection->engine().tables())
            all += stored(u"SELECT * FROM %1 ORDER BY 1"_s.arg(table)) + u'\n';
        return all;
    }
    static bool isRefusal(std::int32_t number) {
        return number == 0 || number == error::statement || number == error::dataMismatch ||
               number == error::general || number == error::divisionByZero || number == error::overflow ||
               number == error::invalidProcedureCall;
    }
    void expectAnswered(const QString& text) const {
        const RuntimeError changing = failureOf([&] {
            const Transaction left(connection->engine());
            connection->execute(text);
        });
        EXPECT_TRUE(isRefusal(changing.number()))
            << text.toStdString() << "\n"
            << changing.number() << changing.description().toStdString();
        const RuntimeError reading = failureOf([&] { rows(text, CursorLocation::Client); });
        EXPECT_TRUE(isRefusal(reading.number())) << text.toStdString() << "\n"
                                                 << reading.number() << reading.description().toStdString();
    }
};

TEST_F(AnyTextTest, IsAnsweredOrRefusedAndLeavesNothing) {
    const QString before = everything();
    const QStringList texts = seeds();
    ASSERT_GT(texts.size(), 20);
    for (const QString& text : texts)
        expectAnswered(text);
    QRandomGenerator random(20261122);
    for (int round = 0; round < 400; ++round)
        expectAnswered(mixed(random, texts));
    EXPECT_EQ(everything(), before);
}

}  // namespace
}  // namespace platform
