// Entry of every test program: one QApplication on the offscreen platform, US English, UTC.
#include "platform/widgets/FreshKeys.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    QApplication application(argc, argv);
    // Tests type as soon as a window is on show; those about the rest set one.
    platform::setTypingRest(std::chrono::milliseconds(0));
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
