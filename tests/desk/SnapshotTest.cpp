// What a list, a question or a preview was opened for is what it works on, whatever happens meanwhile.
#include "DeskTest.h"

#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/FreshKeys.h"
#include "shared/BatchLog.h"

#include <QApplication>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

namespace {

class SnapshotTest : public DeskTest {
protected:
    void seed() override {
        DeskTest::seed();
        for (int number = 0; number < 400; ++number)
            sql(u"INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, "
                "lch_AWP, lch_Supplier, lch_Form, lch_GUID, lch_QTY) VALUES (1, 3, 'Line %1', 'GMS', '', '', "
                "1, 1, '', '', '', 1)"_s.arg(number));
    }
    static platform::XmlDocumentPtr batch() {
        return document(
            u"<Formula><ID>1</ID><Name>Cooling Gel</Name><Type>9</Type><Size>3</Size><QTY>10</QTY>"
            "<Make>20</Make><CustomMix PreGrind=\"2\" FreeSpin=\"1\"/></Formula>"_s);
    }
    static platform::PreviewWindow* preview() {
        for (QWidget* found : QApplication::topLevelWidgets()) {
            if (auto* window = qobject_cast<platform::PreviewWindow*>(found))
                return window;
        }
        return nullptr;
    }
    static QStringList textsOf(const platform::Page& page) {
        QStringList texts;
        for (const platform::PageItem& item : page.items)
            texts << item.text;
        return texts;
    }
};

TEST_F(SnapshotTest, APreviewShowsTheBatchItWasAskedFor) {
    click(u"cmdLogs"_s);
    ASSERT_EQ(str(text(logs, u"txtlog_Lot"_s)), "AB0010");
    force(u"mnuFormulaLog"_s);
    auto* pagesShown = preview();
    ASSERT_TRUE(pagesShown);
    ASSERT_FALSE(pagesShown->isComplete()) << "the rest is laid out while the user goes on";
    click(u"cmdNext"_s);
    click(u"cmdEdit"_s);
    auto& lines = control<platform::RecordGrid>(logs, u"grdIngredients"_s);
    const auto row = lines.dataSource()->position();
    ASSERT_TRUE(test::waitFor([&] { return pagesShown->isComplete(); }));
    const auto& pages = pagesShown->document().pages;
    ASSERT_GT(pages.size(), 3U);
    EXPECT_TRUE(textsOf(pages.back()).contains(u"AB0010"_s)) << str(textsOf(pages.back()).join(u'|'));
    EXPECT_FALSE(textsOf(pages.back()).contains(text(logs, u"txtlog_Lot"_s)));
    EXPECT_EQ(lines.dataSource()->position(), row);
    closePreview();
}

TEST_F(SnapshotTest, ThePreviewDoesNotMoveTheGrid) {
    click(u"cmdLogs"_s);
    auto& lines = control<platform::RecordGrid>(logs, u"grdIngredients"_s);
    force(u"mnuFormulaLog"_s);
    auto* pagesShown = preview();
    ASSERT_TRUE(pagesShown);
    lines.dataSource()->setPosition(7);
    ASSERT_TRUE(test::waitFor([&] { return pagesShown->isComplete(); }));
    EXPECT_EQ(lines.dataSource()->position(), 7);
    closePreview();
}

TEST_F(SnapshotTest, AListOutlivesABatchLoggedMeanwhile) {
    click(u"cmdLogs"_s);
    whileOpen(u"frmSearchRS"_s, [&](QWidget& list) {
        sign();
        EXPECT_TRUE(window->batchLog().addLog(batch(), document(resultsXml())));
        child<platform::RecordGrid>(list, "TDBList1")->selectRow(0);
        child<QPushButton>(list, "cmdOK")->click();
    });
    search(u"cool"_s);
    EXPECT_EQ(str(text(logs, u"txtlog_Name"_s)), "Cooling Gel");
}

TEST_F(SnapshotTest, AQuestionDeletesTheBatchThatItNames) {
    click(u"cmdLogs"_s);
    ASSERT_EQ(str(text(logs, u"txtlog_Lot"_s)), "AB0010");
    whileOpen(u"AskDialog"_s, [&](QWidget& question) {
        sign();
        EXPECT_TRUE(window->batchLog().addLog(batch(), document(resultsXml())));
        EXPECT_EQ(str(text(logs, u"txtlog_Lot"_s)), "AB0012") << "another one is on view";
        answer("OK", u"No Records"_s);  // the move after it runs on the set as it was
        child<QPushButton>(question, "Yes")->click();
    });
    click(u"cmdDelete"_s);
    EXPECT_EQ(str(sqlText(u"SELECT LogID FROM Log ORDER BY LogID"_s)), "2\n3\n4");
}

TEST_F(SnapshotTest, TheSigningDialogTakesNoKeysMeantForAnotherWindow) {
    click(u"cmdLogs"_s);
    platform::setTypingRest(std::chrono::milliseconds(600'000));
    whileOpen(u"frmInitials"_s, [](QWidget& form) {
        auto* initials = child<platform::TextBox>(form, "txtInitials");
        QTest::keyClicks(initials, u"stir well"_s);
        QTest::keyClick(initials, Qt::Key_Return);
        EXPECT_EQ(str(initials->text()), "");
        child<QPushButton>(form, "cmdCancel")->click();
    });
    EXPECT_FALSE(window->batchLog().addLog(batch(), document(resultsXml())));
    platform::setTypingRest(std::chrono::milliseconds(0));
}

}  // namespace
