// The magnifier and the cross in a box: what they are called, and what a press does.
#include "platform/widgets/SearchBox.h"
#include "platform/widgets/RecordList.h"
#include "platform/widgets/Texts.h"
#include "support/Waiting.h"

#include <QAccessible>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

class SearchBoxes : public testing::Test {
protected:
    void SetUp() override {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&other);
        column->addWidget(&box);
        box.setAccessibleName(u"Find"_s);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(support::becomesActive(&window));
        other.setFocus();
    }
    void TearDown() override { setTextTranslator({}); }

    /// The names of the buttons on show in it, as they are told.
    static QStringList spoken(const QLineEdit& in) {
        QStringList names;
        for (QToolButton* button : in.findChildren<QToolButton*>()) {
            if (button->isVisible())
                names << QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name);
        }
        names.sort();
        return names;
    }
    static void press(const QLineEdit& in, const QString& name) {
        for (QToolButton* button : in.findChildren<QToolButton*>()) {
            if (button->isVisible() && button->toolTip() == name)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        ADD_FAILURE() << "no button has the tip " << qPrintable(name);
    }

    QWidget window;
    QLineEdit other, box;
};

TEST_F(SearchBoxes, TheMagnifierIsNamedLikeTheBoxAndLeadsIntoIt) {
    addMagnifier(box);
    EXPECT_EQ(spoken(box), QStringList{u"Find"_s});
    press(box, u"Find"_s);
    EXPECT_TRUE(box.hasFocus());
}

TEST_F(SearchBoxes, TheCrossIsThereWhileThereIsSomethingToClear) {
    addClearButton(box);
    EXPECT_EQ(spoken(box), QStringList());
    QTest::keyClicks(&box, u"zinc"_s);
    EXPECT_EQ(spoken(box), QStringList{u"Clear the box"_s});
    const QSignalSpy edited(&box, &QLineEdit::textEdited);
    press(box, u"Clear the box"_s);
    EXPECT_EQ(box.text(), QString());
    EXPECT_EQ(edited.count(), 1) << "as if typed";
    EXPECT_EQ(spoken(box), QStringList());
    box.undo();
    EXPECT_EQ(box.text(), u"zinc"_s);
}

TEST_F(SearchBoxes, ALanguageThatComesLaterNamesTheCross) {
    addClearButton(box);
    setTextTranslator([](const QString& english) { return u"<%1>"_s.arg(english); });
    QTest::keyClicks(&box, u"z"_s);
    EXPECT_EQ(spoken(box), QStringList{u"<Clear the box>"_s});
}

TEST_F(SearchBoxes, TheFilterOfAListNamesBoth) {
    RecordList list;
    list.setColumns({{u"Name"_s}});
    list.setTexts(u"Filter formulas"_s, u"Formulas"_s);
    list.show();
    ASSERT_TRUE(support::becomesExposed(&list));
    auto& filter = *list.findChild<QLineEdit*>(u"txtListFilter"_s);
    QTest::keyClicks(&filter, u"z"_s);
    EXPECT_EQ(spoken(filter), (QStringList{u"Clear the box"_s, u"Filter formulas"_s}));
}

}  // namespace
