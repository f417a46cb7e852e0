// What counts as typed in a form's boxes, and what a draft learns of each.
#include "screens/TypedBoxes.h"

#include "Child.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/ReportList.h"

#include <QLabel>
#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

/// Two named lines, one of them without a label of its own, and a number that is set by arrows.
class TypedBoxesTest : public ::testing::Test {
protected:
    TypedBoxesTest() {
        name.setObjectName("txtName");
        nameLabel.setBuddy(&name);
        other.setObjectName("txtOther");
        other.setAccessibleName("Other text");
        cycles.setObjectName("lblSetCycles");
        list.setObjectName("lstSteps");
        list.setColumnCaptions({"Time"});
        name.setText("before");
        boxes.settle();
    }
    QStringList typed() const {
        QStringList fields;
        for (const DraftField& field : boxes.typed())
            fields << u"%1 (%2): %3 for %4"_s.arg(field.control, field.label, field.typed, field.replaced);
        return fields;
    }

    QWidget form;
    QLabel strangeLabel{"Strange", &form}, nameLabel{"Name", &form};
    platform::TextBox name{&form}, other{&form};
    QLabel cycles{"3", &form};
    platform::UpDown arrows{&form};
    platform::ReportList list{&form};
    TypedBoxes boxes{form};
};

TEST_F(TypedBoxesTest, ABoxIsToldByItsOwnLabelOrElseByItsSpokenName) {
    name.setText("typed");
    other.setText("text");
    cycles.setText("4");
    EXPECT_EQ(typed(), (QStringList{"txtName (Name): typed for before", "txtOther (Other text): text for ",
                                    "lblSetCycles (): 4 for 3"}));
    EXPECT_TRUE(boxes.any());
    boxes.settle();
    EXPECT_FALSE(boxes.any());
    EXPECT_TRUE(typed().isEmpty());
}

TEST_F(TypedBoxesTest, WhileBoxesAreFilledNothingIsTyped) {
    boxes.unsettle();
    name.setText("filled");
    EXPECT_FALSE(boxes.any());
    boxes.settle();
    EXPECT_TRUE(typed().isEmpty());
    EXPECT_EQ(boxes.shown("txtName"), "filled");
    EXPECT_EQ(boxes.shown("txtNothing"), "");
}

TEST_F(TypedBoxesTest, ATextThatCameBackCountsAgainstWhatItReplacedAlone) {
    name.setText("back");
    other.setText("saved");
    boxes.settle();
    boxes.stillTyped({"txtName", "Name", "back", "before"});
    EXPECT_EQ(typed(), QStringList("txtName (Name): back for before"));
}

TEST_F(TypedBoxesTest, TextsGoIntoTheirOwnBoxesAndCellsIntoNone) {
    boxes.type({{"txtName", {}, "one", {}}, {"txtOther", {}, "two", {}, true}});
    EXPECT_EQ(name.text(), "one");
    EXPECT_EQ(other.text(), "");
}

TEST_F(TypedBoxesTest, EveryWayToChangeABoxIsHeard) {
    QSignalSpy heard(&boxes, &TypedBoxes::edited);
    arrows.setValue(arrows.value() + 1);
    EXPECT_EQ(heard.count(), 1) << "arrows";
    name.setText("typed");
    EXPECT_EQ(heard.count(), 2) << "a line";
    list.addRow({"1:00"});
    EXPECT_EQ(heard.count(), 3) << "a row more";
    list.removeRow(0);
    EXPECT_EQ(heard.count(), 4) << "a row less";
}

}  // namespace
