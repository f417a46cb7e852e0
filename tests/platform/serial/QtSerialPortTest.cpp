// Bytes over a real pseudo-terminal, and the end of a line.
#include "support/TempProgramFolder.h"
#include "support/Waiting.h"
#include "support/WarningTrap.h"

#include <gtest/gtest.h>

#include "Terminal.h"

#include "platform/serial/QtSerialPort.h"

#include <QSignalSpy>

using namespace platform;

namespace {

class QtSerialPortTest : public testing::Test {
protected:
    support::WarningTrap warnings;
    test::Terminal terminal;
    QtSerialPort port;
    QByteArray received;

    void SetUp() override {
        QObject::connect(&port, &SerialPort::bytesRead, &port,
                         [this](const QByteArray& bytes) { received += bytes; });
        ASSERT_TRUE(port.open(terminal.path(), 57600)) << port.errorText().toStdString();
    }
};

QByteArray everyByte() {
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes += static_cast<char>(value);
    return bytes;
}

}  // namespace

TEST_F(QtSerialPortTest, EveryByteBothWays) {
    EXPECT_TRUE(port.write(everyByte()));
    EXPECT_EQ(terminal.read(256), everyByte());
    terminal.write(everyByte());
    EXPECT_TRUE(support::waitFor([&] { return received.size() == 256; }));
    EXPECT_EQ(received, everyByte());
}

TEST_F(QtSerialPortTest, PulledPlugIsToldOnceAndClosesThePort) {
    QSignalSpy failed(&port, &SerialPort::failed);
    terminal.close();
    EXPECT_TRUE(support::waitFor([&] { return failed.count() == 1; }));
    EXPECT_FALSE(port.isOpen());
    EXPECT_FALSE(port.errorText().isEmpty());
    EXPECT_FALSE(port.write("x"));
    // What were still to come would come before a word over the next line.
    const test::Terminal other;
    ASSERT_TRUE(port.open(other.path(), 57600));
    other.write("x");
    EXPECT_TRUE(support::waitFor([&] { return received == "x"; }));
    EXPECT_EQ(failed.count(), 1);
}

TEST_F(QtSerialPortTest, ClosingIsSilentAndOpeningAgainWorks) {
    QSignalSpy failed(&port, &SerialPort::failed);
    port.close();
    port.close();
    EXPECT_FALSE(port.isOpen());
    ASSERT_TRUE(port.open(terminal.path(), 57600));
    ASSERT_TRUE(port.open(terminal.path(), 57600)) << "opening closes first";
    EXPECT_TRUE(port.write("hello"));
    EXPECT_EQ(terminal.read(5), "hello");
    terminal.write("there");
    EXPECT_TRUE(support::waitFor([&] { return received == "there"; }));
    EXPECT_EQ(failed.count(), 0);
}

TEST_F(QtSerialPortTest, ThroughALink) {
    support::TempProgramFolder folder;
    port.close();
    QFile::link(terminal.path(), folder.path("COM1"));
    ASSERT_TRUE(port.open(folder.path("COM1"), 57600)) << port.errorText().toStdString();
    EXPECT_TRUE(port.write("x"));
    EXPECT_EQ(terminal.read(1), "x");
}

TEST_F(QtSerialPortTest, NoSuchDevice) {
    EXPECT_FALSE(port.open("/nowhere/COM1", 57600));
    EXPECT_EQ(port.errorText(),
              "There is no device at /nowhere/COM1. Check the cable and the power of the device.");
    EXPECT_FALSE(port.open({}, 57600));
}
