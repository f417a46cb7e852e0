// The toolkit's inner names and classes that the program finds things by. They are no interface of it: when one of
// these fails after an update of the toolkit, the look or the dialog named here has to be mended.
#include <QCalendarWidget>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QTableView>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

bool hasInside(const QWidget& widget, const char* className) {
    for (const QWidget* child : widget.findChildren<QWidget*>())
        if (child->inherits(className))
            return true;
    return false;
}

}  // namespace

TEST(ToolkitNames, TheHeadAndTheArrowsOfACalendar) {
    const QCalendarWidget calendar;
    EXPECT_NE(calendar.findChild<QWidget*>("qt_calendar_navigationbar"), nullptr)
        << "Calendar.cpp: the head keeps the toolkit's colors";
    for (const char* arrow : {"qt_calendar_prevmonth", "qt_calendar_nextmonth"})
        EXPECT_NE(calendar.findChild<QToolButton*>(arrow), nullptr)
            << "Calendar.cpp: an arrow keeps the toolkit's picture and has no name for screen readers: "
            << arrow;
    EXPECT_TRUE(hasInside(calendar, "QCalendarView")) << "Style.cpp: days would be drawn as rows of a grid";
}

TEST(ToolkitNames, TheListOfAChoiceBox) {
    QComboBox box;
    box.addItem("one");
    EXPECT_TRUE(box.view()->inherits("QComboBoxListView"))
        << "Style.cpp, Looks.cpp: the list's rows and frame";
    EXPECT_TRUE(box.view()->parentWidget()->inherits("QComboBoxPrivateContainer"))
        << "Style.cpp, Looks.cpp: the frame around the list";
}

TEST(ToolkitNames, TheNameAndTheListOfAFileDialog) {
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    EXPECT_NE(dialog.findChild<QLineEdit*>("fileNameEdit"), nullptr)
        << "PrintFlow.cpp: a path typed in full would lose to the folder that got selected meanwhile";
    EXPECT_NE(dialog.findChild<QListView*>("listView"), nullptr)
        << "PrintFlow.cpp: a path typed in full would lose to the folder that got selected meanwhile";
}
