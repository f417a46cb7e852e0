// What stands where in the windows that ask.
#include "platform/widgets/AskDialog.h"
#include "Child.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using platform::AskDialog;
using support::child;

int topOf(const AskDialog& box, const QWidget& part) { return part.mapTo(&box, QPoint()).y(); }

TEST(AskDialogs, TheLineStandsBetweenItsQuestionAndTheButtons) {
    platform::LineGuide noted;
    noted.note = [](const QString&) { return platform::LineNote{u"in grams"_s, false}; };
    const platform::LineGuide remarks[] = {{}, noted};
    for (const platform::LineGuide& guide : remarks) {
        AskDialog box(u"Enter all or part of chemical name"_s, u"Search Chemical"_s, u"hydro"_s, guide,
                      nullptr);
        box.show();
        const auto& question = *child<QLabel>(box, "prompt");
        const auto& line = *child<QLineEdit>(box, "line");
        EXPECT_LE(topOf(box, question) + question.height(), topOf(box, line));
        EXPECT_LE(topOf(box, line) + line.height(), topOf(box, *child<QPushButton>(box, "OK")));
    }
}

}  // namespace
