// Entry of every test program: one QApplication on the offscreen platform, US English, UTC.
#include "platform/widgets/FreshKeys.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace {

/// Where the build names a part of a program's tests that is enough (SORVANTO_USUAL_TESTS, a filter), the others are for
/// runs with SORVANTO_LONG=1.
void leaveOutLongTests() {
    const QByteArray usual = qgetenv("SORVANTO_USUAL_TESTS");
    if (!usual.isEmpty() && qEnvironmentVariableIntValue("SORVANTO_LONG") == 0 &&
        testing::GTEST_FLAG(filter) == "*")
        testing::GTEST_FLAG(filter) = usual.toStdString();
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    leaveOutLongTests();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    QApplication application(argc, argv);
    // Tests type as soon as a window is on show; those about the rest set one.
    platform::setTypingRest(std::chrono::milliseconds(0));
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
