// What a wait for the server must leave as it is.
#include "../screens/ScreenTest.h"
#include "Disturber.h"
#include "Settle.h"

#include "platform/widgets/Boxes.h"

#include <QScreen>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class WaitTest : public ScreenTest {
protected:
    void seed() override {
        sql(u"INSERT INTO Chemical (chm_Name) SELECT 'Chemical ' || number FROM generate_series(1, 300) AS number"_s);
    }
};

TEST_F(WaitTest, ARowThatWasPaintedInAWaitIsSeenAfterwards) {
    load();
    Disturber::current().rest();
    const auto rows = platform::Recordset::create();
    rows->open(u"SELECT [ChemicalID], [chm_Name] FROM [Chemical]"_s, openDB());
    platform::RecordGrid list;
    list.setColumns({{"chm_Name", "Name", 300, false, false, {}}});
    list.setDataSource(rows);
    list.resize(400, 300);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    support::settle();
    for (const int row : {250, 20, 290}) {
        list.scrollTo(list.model()->index(row, 0));
        openDB()->changeState();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const QImage seen = list.screen()->grabWindow(list.winId()).toImage();
            return seen.convertToFormat(QImage::Format_RGB32) ==
                   list.grab().toImage().convertToFormat(QImage::Format_RGB32);
        })) << row;
    }
}

TEST_F(WaitTest, AWindowThatIsClosedInAWaitGoesBehindIt) {
    load();
    click(u"cmdChemicals"_s);
    control<platform::TextBox>(chemicals, u"txtchm_Lot"_s).setText(u"typed"_s);
    Disturber::current().rest();
    int turns = 0;
    Disturber::current().also = [&] {
        if (turns++ == 0) {
            EXPECT_FALSE(window->close());
        }
        EXPECT_EQ(programEnds, 0);
    };
    click(u"cmdSave"_s);
    EXPECT_GT(turns, 0);
    EXPECT_EQ(str(sqlText(u"SELECT count(*) FROM Chemical WHERE chm_Lot = 'typed'"_s)), "1");
    Disturber::current().also = {};
    EXPECT_TRUE(QTest::qWaitFor([&] { return programEnds == 1; }));
}

}  // namespace
