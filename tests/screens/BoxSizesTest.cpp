// The boxes of the screens against the columns of the database, and the screens against the room of the window.
#include "FormulaScreenTest.h"
#include "PatientScreenTest.h"
#include "Settle.h"

#include "platform/basic/Dates.h"
#include "platform/basic/SystemLocale.h"
#include "platform/widgets/Theme.h"
#include "screens/BoxText.h"

#include <QFile>
#include <QHeaderView>
#include <QRegularExpression>
#include <algorithm>

using namespace sorvanto;

namespace {

class BoxSizesTest : public PatientScreenTest {
protected:
    void SetUp() override {
        PatientScreenTest::SetUp();
        platform::applyTheme(*qApp, false);
    }
};

/// As the delivered schema declares it, read another way. Names of columns are those of one table.
int declaredSize(const QString& schema, const QString& column) {
    const QRegularExpression row(u"\\b"_s + column + u" TEXT\\((\\d+)\\)"_s,
                                 QRegularExpression::CaseInsensitiveOption);
    return row.match(schema).captured(1).toInt();
}

}  // namespace

TEST_F(BoxSizesTest, EveryBoxHoldsWhatItsColumnHolds) {
    load();
    QFile file(QStringLiteral(SORVANTO_SOURCE_DIR "/data/schema.sql"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString schema = QString::fromUtf8(file.readAll());
    int limited = 0;
    for (const ScreenNumber number : {formulas, chemicals, logs, patients}) {
        for (const auto* box : screen<RecordScreen>(number).findChildren<platform::TextBox*>()) {
            EXPECT_EQ(box->columnSize(), declaredSize(schema, box->objectName().mid(3)))
                << qPrintable(box->objectName());
            limited += box->columnSize() > 0 ? 1 : 0;
        }
    }
    EXPECT_GT(limited, 25);
}

TEST_F(BoxSizesTest, ATypedNameEndsWhereItsColumnEnds) {
    edit();
    box("txtpat_FName").setFocus();
    QTest::keyClicks(&box("txtpat_FName"), QString(60, u'x'));
    EXPECT_EQ(box("txtpat_FName").text().size(), 50);
}

TEST_F(BoxSizesTest, AKeptTextThatIsLongerComesBackWhole) {
    edit();
    const QString kept(60, u'x');
    typeIntoBox(box("txtpat_FName"), kept);
    EXPECT_EQ(box("txtpat_FName").text(), kept);
    EXPECT_TRUE(box("txtpat_FName").isModified());
}

TEST_F(BoxSizesTest, ACellHoldsWhatItsColumnHolds) {
    editPrescriptions();
    typeIntoCell(0, "Consult", QString(70, u'x'));
    EXPECT_EQ(editor()->text().size(), 60);
}

TEST_F(BoxSizesTest, ThePrescriptionsFitASmallScreenAndShowTheirDatesWhole) {
    openScreen();
    control<QTabWidget>(patients, "tabPatient").setCurrentIndex(1);
    window->resize(1366, 768);
    support::settle();
    const platform::RecordGrid& list = grid();
    EXPECT_EQ(list.horizontalHeader()->length(), list.viewport()->width()) << "it would have to be scrolled";
    for (const char* field : {"log_Date", "rxs_Date", "RXsID"}) {
        const int column = list.columnByField(field);
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            const QString text = list.model()->index(row, column).data().toString();
            EXPECT_LE(list.widthOf(text), list.columnWidth(column)) << field << " " << qPrintable(text);
        }
    }
    // A name has its room, or all of them are whole with less.
    for (const char* field : {"log_Name", "rxs_Doctor"}) {
        const int column = list.columnByField(field);
        int widest = 0;
        for (int row = 0; row < list.model()->rowCount(); ++row)
            widest = std::max(widest, list.widthOf(list.model()->index(row, column).data().toString()));
        EXPECT_GE(list.columnWidth(column), std::min(widest, 100)) << field;
    }
}

TEST_F(BoxSizesTest, AnyDateOfAPrescriptionIsWholeInTheCustomsOfItsSystem) {
    for (const char* name : {"en_US", "fr_FR", "de_DE", "ru_RU"}) {
        platform::setSystemLocale(QLocale(QLatin1String(name)));
        window.reset();
        openScreen();
        control<QTabWidget>(patients, "tabPatient").setCurrentIndex(1);
        window->resize(1366, 768);
        support::settle();
        const platform::RecordGrid& list = grid();
        for (QDate day(2026, 1, 1); day.year() == 2026; day = day.addDays(1)) {
            const QDateTime midnight(day, QTime(0, 0), Qt::UTC), late(day, QTime(20, 48, 48), Qt::UTC);
            EXPECT_LE(list.widthOf(platform::dateText(midnight)),
                      list.columnWidth(list.columnByField("rxs_Date")))
                << name << " " << qPrintable(platform::dateText(midnight));
            EXPECT_LE(list.widthOf(platform::dateText(late)),
                      list.columnWidth(list.columnByField("log_Date")))
                << name << " " << qPrintable(platform::dateText(late));
        }
    }
    platform::setSystemLocale(std::nullopt);
}

TEST_F(BoxSizesTest, NotesGrowWithTheWindow) {
    openScreen();
    const auto height = [this](ScreenNumber screenNumber, const char* box) {
        return control<platform::MemoBox>(screenNumber, box).height();
    };
    window->resize(1366, 768);
    support::settle();
    const int small = height(patients, "txtpat_Notes");
    window->resize(1920, 1080);
    support::settle();
    EXPECT_GT(height(patients, "txtpat_Notes"), small + 200);
    const std::tuple<const char*, ScreenNumber, const char*> others[] = {
        {"cmdFormulas", formulas, "txtfrm_Instructions"},
        {"cmdChemicals", chemicals, "txtchm_Notes"},
        {"cmdLogs", logs, "txtlog_Notes"},
        {"cmdCurrent", currentFormula, "txtfrm_Instructions"}};
    for (const auto& [button, number, box] : others) {
        click(button);
        support::settle();
        EXPECT_GT(height(number, box), 300) << button;
    }
}

TEST_F(BoxSizesTest, AGridOfManyRowsGrowsWithTheWindow) {
    for (int i = 0; i < 40; ++i)
        sql("INSERT INTO RXs (LogID, PatientID, rxs_QTY) VALUES (1, 1, 1)");
    openScreen();
    control<QTabWidget>(patients, "tabPatient").setCurrentIndex(1);
    window->resize(1366, 768);
    support::settle();
    const int small = grid().height();
    window->resize(1920, 1080);
    support::settle();
    EXPECT_GT(grid().height(), small + 200);
}

TEST_F(BoxSizesTest, RowsOfAllGridsAndListsHaveOnePitch) {
    load();
    int grids = 0;
    for (const auto* table : window->findChildren<QTableView*>()) {
        if (table->objectName().startsWith("grd"_L1) || table->objectName() == "mixerSteps"_L1) {
            EXPECT_EQ(table->verticalHeader()->defaultSectionSize(), 32) << qPrintable(table->objectName());
            ++grids;
        }
    }
    EXPECT_GE(grids, 5);
    for (const ScreenNumber number : {formulas, logs}) {
        auto& list = control<platform::ReportList>(number, "lstCustom");
        list.addRow({"24", "12", "00:00:10", "0"});
        EXPECT_EQ(list.visualItemRect(list.topLevelItem(0)).height(), 32);
    }
}
