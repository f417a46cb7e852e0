// What only records in a file can meet.
#include "RecordsTest.h"

#include <QFile>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class MissingFileTest : public RecordsTest {};

TEST_F(MissingFileTest, AMissingFileIsToldForEachStatement) {
    basMain::gConnection->close();
    QFile::remove(databasePath());
    asker.expectMsgBox("Database file not found. Please set in options",
                       {platform::Buttons::Ok, platform::Icon::Information}, u"DATABASE NOT FOUND"_s);
    EXPECT_FALSE(clsChemical().openChemical(1, {}));
    expectReport("clsChemical:chemicalOpen");
}

}  // namespace
