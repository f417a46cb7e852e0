// One table in pieces: every row once, in the order of its key, also while others write.
#include "platform/data/TableReader.h"
#include "DataTest.h"

namespace platform {
namespace {

class TableReaderTest : public DataTest {
protected:
    void SetUp() override {
        DataTest::SetUp();
        elsewhere(u"CREATE TABLE Piece (PieceID INTEGER PRIMARY KEY, Name TEXT(20), Cost CURRENCY,"
                  " Lot TEXT(20))"_s);
        for (const int key : {4, 2, 9, 7})
            elsewhere(u"INSERT INTO Piece (PieceID, Name, Cost) VALUES (%1, 'Name %1', %1.5)"_s.arg(key));
    }
    TableReader reader() const {
        return {connection, u"Piece"_s, u"PieceID"_s, {u"Name"_s, u"Cost"_s, u"Lot"_s}};
    }
    static QStringList names(const std::vector<KeyedRow>& read) {
        QStringList result;
        for (const KeyedRow& row : read)
            result << row.values[0].toString();
        return result;
    }
};

TEST_F(TableReaderTest, EveryRowComesOnceInTheOrderOfItsKey) {
    TableReader pieces = reader();
    EXPECT_EQ(names(pieces.next(3)), (QStringList{u"Name 2"_s, u"Name 4"_s, u"Name 7"_s}));
    EXPECT_EQ(names(pieces.next(3)), (QStringList{u"Name 9"_s}));
    EXPECT_TRUE(pieces.next(3).empty());
}

TEST_F(TableReaderTest, ValuesHaveTheTypesOfTheirColumns) {
    const std::vector<KeyedRow> read = reader().next(1);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].key, 2);
    EXPECT_EQ(read[0].values[1].value<Currency>(), Currency::fromDouble(2.5));
    EXPECT_TRUE(read[0].values[2].isNull());
}

TEST_F(TableReaderTest, WhatIsWrittenBetweenTwoPiecesIsReadAsItThenStands) {
    TableReader pieces = reader();
    pieces.next(2);
    elsewhere(u"DELETE FROM Piece WHERE PieceID = 7"_s);
    elsewhere(u"INSERT INTO Piece (PieceID, Name) VALUES (8, 'Name 8')"_s);
    EXPECT_EQ(names(pieces.next(9)), (QStringList{u"Name 8"_s, u"Name 9"_s}));
}

TEST_F(TableReaderTest, AClosedConnectionIsSaid) {
    TableReader pieces = reader();
    connection->close();
    EXPECT_EQ(failureOf([&] { pieces.next(1); }).number(), error::objectClosed);
}

}  // namespace
}  // namespace platform
