// Where the ports are, and which of them can be opened now.
#include "support/Hindrances.h"
#include "support/TempProgramFolder.h"

#include <gtest/gtest.h>

#include "Terminal.h"

#include "platform/serial/PortProbe.h"
#include "platform/serial/QtSerialPort.h"

#include <QDir>
#include <QFileInfo>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

class PortProbeTest : public testing::Test {
protected:
    PortProbeTest() {
        QDir().mkpath(folder.path("ports"));
        QDir().mkpath(folder.path("dev"));
    }
    QString port(int n) const { return folder.path(u"ports/COM%1"_s.arg(n)); }
    QString found(int n) const { return QFileInfo(portPath(n, folder.path("dev"))).fileName(); }

    support::TempProgramFolder folder;
};

}  // namespace

TEST_F(PortProbeTest, DevicesByKindAndNumber) {
    for (const char* name :
         {"ttyS0", "ttyS1", "ttyACM1", "ttyACM0", "ttyUSB10", "ttyUSB2", "tty", "ttyX0", "null"})
        folder.write(u"dev/"_s + name, {});
    EXPECT_EQ(found(1), "ttyUSB2");
    EXPECT_EQ(found(2), "ttyUSB10");
    EXPECT_EQ(found(3), "ttyACM0");
    EXPECT_EQ(found(4), "ttyACM1");
}

TEST_F(PortProbeTest, OnlyOneToFour) {
    for (int n = 0; n < 6; ++n)
        folder.write(u"dev/ttyS%1"_s.arg(n), {});
    EXPECT_EQ(found(4), "ttyS3");
    for (const int n : {-1, 0, 5}) {
        EXPECT_EQ(portPath(n), "");
        EXPECT_FALSE(portPresent(n));
    }
}

TEST_F(PortProbeTest, NoDevicesNoPath) { EXPECT_EQ(found(1), ""); }

TEST_F(PortProbeTest, OwnPortComesFirstAlsoAsALinkToNothing) {
    folder.write("dev/ttyUSB0", {});
    EXPECT_EQ(found(1), "ttyUSB0");
    QFile::link("/nowhere", port(1));
    EXPECT_EQ(portPath(1), port(1));
    EXPECT_FALSE(portPresent(1));
    EXPECT_EQ(portState(port(1)), PortState::Absent);
}

TEST_F(PortProbeTest, PresentMeansCanBeOpenedNow) {
    test::Terminal terminal;
    QFile::link(terminal.path(), port(2));
    EXPECT_TRUE(portPresent(2));
    EXPECT_TRUE(portPresent(2)) << "the probe leaves nothing behind";
    EXPECT_EQ(openRefusal(port(2)), "");
    terminal.close();
    EXPECT_FALSE(portPresent(2));
}

TEST_F(PortProbeTest, PlainFileAndFolderAreNoPorts) {
    folder.write("ports/COM1", "text");
    QDir().mkpath(port(2));
    EXPECT_FALSE(portPresent(1));
    EXPECT_FALSE(portPresent(2));
    EXPECT_EQ(openRefusal(port(1)),
              "There is no device at " + port(1) + ". Check the cable and the power of the device.");
}

TEST_F(PortProbeTest, HeldPortIsNotPresent) {
    test::Terminal terminal;
    QFile::link(terminal.path(), port(1));
    {
        QtSerialPort holder;
        ASSERT_TRUE(holder.open(port(1), 57600)) << holder.errorText().toStdString();
        EXPECT_FALSE(portPresent(1));
        EXPECT_EQ(portState(port(1)), PortState::Held);
        EXPECT_EQ(openRefusal(port(1)), "Another program uses " + port(1) + ". Close that program.");
        QtSerialPort second;
        EXPECT_FALSE(second.open(port(1), 57600));
        EXPECT_EQ(second.errorText(), openRefusal(port(1)));
    }
    EXPECT_TRUE(portPresent(1));
}

TEST_F(PortProbeTest, ForbiddenPortNamesTheGroup) {
    test::Terminal terminal;
    const QByteArray device = QFile::encodeName(terminal.path());
    ASSERT_EQ(::chmod(device.constData(), 0), 0);
    const support::OrdinaryUser user;
    if (::faccessat(AT_FDCWD, device.constData(), R_OK, AT_EACCESS) == 0)
        GTEST_SKIP() << "this user may open everything";
    EXPECT_EQ(portState(terminal.path()), PortState::Forbidden);
    const QString group = deviceGroup(terminal.path());
    const QString refusal = openRefusal(terminal.path());
    EXPECT_TRUE(refusal.startsWith("You may not use " + terminal.path())) << refusal.toStdString();
    EXPECT_TRUE(
        refusal.contains(group.isEmpty() ? u"Ask the administrator"_s : "Join the group \"" + group + "\""));
}
