// Which rows a set has, and their order, is settled when it is opened, however its keys are held.
#include "platform/data/RowKeys.h"
#include "DataTest.h"

using namespace Qt::StringLiterals;

namespace platform {
namespace {

std::vector<std::int64_t> all(const RowKeys& keys) {
    std::vector<std::int64_t> found;
    for (std::int64_t row = 0; row < keys.count(); ++row)
        found.push_back(keys.at(row));
    return found;
}

TEST(RowKeys, CountOnFromTheFirstAndGoOnWithWhatIsAdded) {
    RowKeys keys(7, 3);
    EXPECT_EQ(all(keys), (std::vector<std::int64_t>{7, 8, 9}));
    keys.append(12);
    keys.append(10);
    EXPECT_EQ(all(keys), (std::vector<std::int64_t>{7, 8, 9, 12, 10}));
    RowKeys some(std::vector<std::int64_t>{5, 2});
    some.append(9);
    EXPECT_EQ(all(some), (std::vector<std::int64_t>{5, 2, 9}));
    EXPECT_EQ(RowKeys().count(), 0);
}

/// The keys of the six patients as the test leaves them before the set is opened.
class KeysOfATable : public DataTest, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        DataTest::SetUp();
        connection->execute(u"DELETE FROM RXs WHERE RXsID > 0"_s);
        if (*GetParam())
            connection->execute(QString::fromLatin1(GetParam()));
        other->open(source(location()));
    }
    QString keysOf(const RecordsetPtr& set) const {
        QStringList keys;
        for (std::int64_t row = 0; row < set->recordCount(); ++row)
            keys << set->valueAt(row, 0).toString();
        return keys.join(' '_L1);
    }
    QString inFile() const {
        return stored(u"SELECT PatientID FROM Patient ORDER BY PatientID"_s).replace('\n'_L1, ' '_L1);
    }

    const ConnectionPtr other = std::make_shared<Connection>();
};

INSTANTIATE_TEST_SUITE_P(GapsAndNone, KeysOfATable,
                         ::testing::Values("", "DELETE FROM Patient WHERE PatientID = 1",
                                           "DELETE FROM Patient WHERE PatientID = 3",
                                           "DELETE FROM Patient WHERE PatientID = 6",
                                           "DELETE FROM Patient WHERE PatientID > 1",
                                           "UPDATE Patient SET PatientID = -2 WHERE PatientID = 4",
                                           "UPDATE Patient SET PatientID = 0 WHERE PatientID = 6",
                                           "DELETE FROM Patient WHERE PatientID > 0"));

TEST_P(KeysOfATable, AreThoseInTheFileInTheirOrder) {
    EXPECT_EQ(keysOf(rows(u"SELECT PatientID FROM Patient"_s)), inFile());
    EXPECT_EQ(keysOf(rows(u"SELECT p.PatientID FROM Patient p;"_s)), inFile());
}

TEST_P(KeysOfATable, StayWhatTheyWereWhenTheSetWasOpened) {
    const RecordsetPtr set = rows(u"SELECT PatientID, pat_LName FROM Patient"_s);
    const QString before = inFile();
    EXPECT_EQ(set->eof(), before.isEmpty());
    other->execute(u"INSERT INTO Patient (PatientID, pat_LName) VALUES (900, 'New')"_s);
    other->execute(u"DELETE FROM Patient WHERE PatientID = 2"_s);
    other->execute(u"INSERT INTO Patient (PatientID, pat_LName) VALUES (-900, 'First')"_s);
    EXPECT_EQ(keysOf(set), before);
    const auto gone = before.split(' '_L1).indexOf(u"2"_s);
    if (gone >= 0) {
        EXPECT_EQ(failureOf([&] { set->valueAt(gone, 1); }).number(), error::noCurrentRecord);
    }
    set->requery();
    EXPECT_EQ(keysOf(set), inFile());
}

TEST_P(KeysOfATable, GoOnWithTheRowsAddedInTheSet) {
    const RecordsetPtr set =
        rows(u"SELECT PatientID, pat_LName FROM Patient"_s, CursorLocation::Default, LockType::Optimistic);
    const QString before = inFile();
    set->addNew();
    set->setValue(u"pat_LName"_s, u"Added"_s);
    set->update();
    const QString key = set->value(0).toString();
    EXPECT_EQ(keysOf(set), (before + ' '_L1 + key).trimmed());
    EXPECT_EQ(set->value(1).toString(), u"Added"_s);
}

}  // namespace
}  // namespace platform
