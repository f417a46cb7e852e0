// The height of the formula screen: each tab takes the room it needs, and no more. With SORVANTO_PICTURES
// naming a folder, a picture is kept there.
#include "FormulaScreenTest.h"
#include "Settle.h"
#include "Waiting.h"

#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

using namespace sorvanto;

namespace {

class FormulaHeightTest : public FormulaScreenTest {
protected:
    bool scrolls() const {
        const QWidget* page = formula().parentWidget();
        while (page && !qobject_cast<const QScrollArea*>(page))
            page = page->parentWidget();
        return page && dynamic_cast<const QScrollArea&>(*page).verticalScrollBar()->maximum() > 0;
    }
};

}  // namespace

TEST_F(FormulaHeightTest, TheGeneralTabDoesNotScrollForTheSakeOfTheMixOptions) {
    platform::applyTheme(*qApp, false);
    loadAt("Cooling Gel");
    const int low = formula().minimumSizeHint().height();
    window->resize(1366, window->height() - formula().height() + low);  // as an error strip may leave it
    const QString pictures = qEnvironmentVariable("SORVANTO_PICTURES");
    support::settle();
    if (!pictures.isEmpty())
        window->grab().save(pictures + "/formula-height.png");
    EXPECT_EQ(formula().height(), low);
    EXPECT_FALSE(scrolls());
    tabs().setCurrentIndex(2);
    EXPECT_GT(formula().minimumSizeHint().height(), low);
    EXPECT_TRUE(support::waitFor([&] { return scrolls(); })) << "nothing of the high page gets lost";
    tabs().setCurrentIndex(0);
    EXPECT_TRUE(support::waitFor([&] { return !scrolls(); }));
}
