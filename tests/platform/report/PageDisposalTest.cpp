// Pages that nobody looks at any more go a few at a time, and all of them.
#include "platform/report/PageDisposal.h"
#include "support/Waiting.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(PageDisposal, DropsSomePagesATurnAndEndsItself) {
    QObject owner;
    const QPointer<PageDisposal> disposal = new PageDisposal(std::vector<Page>(1000), &owner);
    EXPECT_EQ(disposal->left(), 1000U);
    std::size_t before = disposal->left(), turns = 0;
    while (disposal && turns < 1000) {
        QCoreApplication::processEvents();
        ++turns;
        if (disposal) {
            EXPECT_LE(before - disposal->left(), 500U) << "never all at once";
            before = disposal->left();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_TRUE(disposal.isNull());
    EXPECT_GT(turns, 2U);
}

TEST(PageDisposal, OfNoPagesEndsItselfToo) {
    QObject owner;
    const QPointer<PageDisposal> disposal = new PageDisposal({}, &owner);
    EXPECT_TRUE(support::waitFor([&] { return disposal.isNull(); }));
}

}  // namespace
