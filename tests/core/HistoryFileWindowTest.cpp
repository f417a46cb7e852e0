// The history of the whole file, as its user sees it.
#include "core/HistoryFileWindow.h"
#include "FixedClock.h"
#include "history/HistoryTest.h"
#include "platform/widgets/Boxes.h"
#include "shared/Context.h"

#include <QAbstractItemModel>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class HistoryFileWindowTest : public HistoryTest {
protected:
    static int rows(const HistoryFileWindow& window) {
        return window.findChild<QTableView*>(u"grdChanges"_s)->model()->rowCount();
    }
    static QString cell(const HistoryFileWindow& window, int row, int column) {
        const QAbstractItemModel& model = *window.findChild<QTableView*>(u"grdChanges"_s)->model();
        return model.index(row, column).data().toString();
    }
    static void setDay(const HistoryFileWindow& window, const char* box, const QDate& day) {
        auto* date = window.findChild<platform::DateBox*>(QLatin1String(box));
        date->setValue(QDateTime(day, QTime(), Qt::UTC));
        emit date->valueEdited();
    }

    Context context;
};

TEST_F(HistoryFileWindowTest, AllRecordsOfTheDaysAreListedNewestFirst) {
    run("INSERT INTO Chemical (chm_Name, chm_Cost) VALUES ('Urea', 2.5)");
    run("INSERT INTO Patient (pat_LName) VALUES ('Stone')");
    outside(u"UPDATE Chemical SET chm_Lot = 'L1'"_s);
    outside(
        u"DROP TRIGGER History_Sealed; UPDATE History SET hst_Zone = 0, hst_When = '2026-03-0' || HistoryID || "
        "' 10:00:00.000'"_s);
    const HistoryFileWindow window(context, connection);
    setDay(window, "txtFrom", QDate(2026, 3, 2));
    setDay(window, "txtTo", QDate(2026, 3, 4));
    ASSERT_EQ(rows(window), 4);
    EXPECT_EQ(cell(window, 0, 1), "another program");
    EXPECT_EQ(cell(window, 0, 3), "Chemical: Urea");
    EXPECT_EQ(cell(window, 0, 6), "L1");
    EXPECT_EQ(cell(window, 1, 3), "Patient: Stone");
    setDay(window, "txtTo", QDate(2026, 3, 2));
    EXPECT_EQ(rows(window), 2);
    setDay(window, "txtFrom", QDate(2026, 5, 2));
    EXPECT_EQ(rows(window), 0);
    EXPECT_FALSE(window.findChild<QPushButton*>(u"cmdPrint"_s)->isEnabled()) << "nothing to print";
}

}  // namespace
