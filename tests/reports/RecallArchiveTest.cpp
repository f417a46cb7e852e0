// A recall list while older batches lie in an archive beside the file.
#include "RecallTest.h"
#include "db/Archive.h"

#include <QFile>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

TEST_F(RecallTest, AZeroIsNotFinalWhileAnArchiveIsMissing) {
    basMain::gConnection->close();
    archiveDatabase(databasePath(), folder.path(u"old.mdb"_s), QDate(2026, 3, 1));
    openDB();
    RunPtr run = paper(list(u"L1"_s));
    EXPECT_TRUE(text(*run, "txtSearched")
                    .contains("An archive with 2 batches from 1/5/2026 to 2/5/2026 is among them."))
        << qPrintable(text(*run, "txtSearched"));
    EXPECT_EQ(str(texts(*run, "txtBatchLot").join('|')), "B2|B1");
    QFile::remove(folder.path(u"old.mdb"_s));
    run = paper(list(u"L1"_s));
    EXPECT_EQ(str(text(*run, "txtTotals")), "0 batches · 0 prescriptions · 0 patients");
    EXPECT_EQ(str(text(*run, "txtGaps")),
              "An archive with 2 batches from 1/5/2026 to 2/5/2026 is not at hand and was "
              "not searched.\nWhat is counted here is not final.");
    EXPECT_EQ(str(text(*run, "txtEnd")),
              "0 batches · 0 prescriptions · 0 patients\nWhat is counted here is not final.");
    EXPECT_EQ(sheets(list(u"L1"_s)).count("What is counted here is not final."), 2) << "on both sheets";
}

}  // namespace
