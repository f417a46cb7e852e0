// What a start loads.
#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

TEST(StartTest, AStartLoadsNoneOfTheServersLibraries) {
    QProcess lister;
    lister.start(u"ldd"_s, {QString::fromUtf8(SORVANTO_BIN_DIR "/sorvanto")});
    ASSERT_TRUE(lister.waitForFinished());
    const QByteArray libraries = lister.readAllStandardOutput();
    ASSERT_TRUE(libraries.contains("libQt6Widgets.so")) << libraries.toStdString();
    EXPECT_FALSE(libraries.contains("libpq.so"));
    EXPECT_FALSE(libraries.contains("libldap"));
}

}  // namespace
}  // namespace e2e
