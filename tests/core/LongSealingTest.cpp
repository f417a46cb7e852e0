// The mouse while a change seals many that other programs made.
#include "core/Application.h"
#include "history/HistoryTest.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QCursor>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class LongSealingTest : public HistoryTest {
protected:
    void TearDown() override {
        onLongSealing({});
        HistoryTest::TearDown();
    }
    void strangers(int rows) const {
        outside(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                "INSERT INTO Chemical (chm_Name) SELECT 'Urea' FROM n"_s.arg(rows));
    }
};

TEST_F(LongSealingTest, TheMouseShowsItUpToTheNextEvent) {
    Application::showLongSealing();
    strangers(quicklySealed);
    run("INSERT INTO Patient (pat_LName) VALUES ('Stone')");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "too quick to be seen";
    strangers(quicklySealed + 1);
    run("INSERT INTO Patient (pat_LName) VALUES ('Reed')");
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_TRUE(support::waitFor([] { return QApplication::overrideCursor() == nullptr; }));
}

}  // namespace
