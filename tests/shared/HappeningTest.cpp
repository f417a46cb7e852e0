// What is announced reaches who listens, and a file that was written can be opened from it.
#include "shared/Happening.h"
#include "Announced.h"
#include "OpenedOutside.h"
#include "TestProgram.h"
#include "platform/basic/Paths.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class HappeningTest : public support::TestProgram {};

TEST_F(HappeningTest, ReachesWhoListens) {
    announce(u"to nobody"_s);
    const support::Announced announced;
    announce(u"Saved"_s);
    EXPECT_EQ(announced.texts(), QStringList(u"Saved"_s));
}

TEST_F(HappeningTest, AFileIsOpenedOrShownInItsFolder) {
    const support::Announced announced;
    const support::OpenedOutside desktop;
    const QString place = platform::programFolder();
    QFile file(place + u"/Chemicals.xls"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    announceFile(u"Exported %1"_s, place + u"\\Chemicals.xls"_s);
    ASSERT_EQ(announced.texts(), QStringList(u"Exported Chemicals.xls"_s));
    const auto actions = announced.last().actions;
    ASSERT_EQ(actions.size(), 2U);
    EXPECT_EQ(actions[0].text, u"Open"_s);
    EXPECT_EQ(actions[1].text, u"Show in folder"_s);
    actions[0].run();
    actions[1].run();
    EXPECT_EQ(desktop.paths,
              QStringList({QFileInfo(file).absoluteFilePath(), QFileInfo(file).absolutePath()}));
}

TEST_F(HappeningTest, AFileThatIsGoneIsSaid) {
    const support::Announced announced;
    const support::OpenedOutside desktop;
    announceFile(u"Exported %1"_s, platform::programFolder() + u"\\Gone.xls"_s);
    announced.last().actions.front().run();
    EXPECT_EQ(announced.texts().back(), u"Gone.xls can not be opened."_s);
    EXPECT_EQ(desktop.paths, QStringList());
}

}  // namespace
