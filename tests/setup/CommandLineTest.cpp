// The program's command line, as read and as answered by the executable itself without a display.
#include "setup/CommandLine.h"

#include "SetupTest.h"
#include "platform/basic/Version.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

TEST(CommandLineTest, APlainStartHasNothingToRead) {
    const StartOrder order = readStart({});
    EXPECT_TRUE(order.folder.isEmpty() && order.mistake.isEmpty());
    EXPECT_FALSE(order.help || order.version || order.layOut || order.copy);
}

TEST(CommandLineTest, TheCopyIsAskedFor) {
    EXPECT_TRUE(readStart({"--copy", "--folder", "/a"}).copy);
    EXPECT_FALSE(needsNoWindow({"--copy"}));
}

TEST(CommandLineTest, TheFolderIsRead) {
    EXPECT_EQ(readStart({"--folder", "/a b"}).folder, "/a b");
    EXPECT_EQ(readStart({"--folder=/a"}).folder, "/a");
    EXPECT_TRUE(readStart({"--lay-out", "--folder", "/a"}).layOut);
}

TEST(CommandLineTest, WhatCantBeUnderstoodIsSaid) {
    for (const QStringList& line : std::vector<QStringList>{{"--folder"},
                                                            {"--folder", ""},
                                                            {"--folder="},
                                                            {"--folder", "a", "--folder", "b"},
                                                            {"--fodler", "a"},
                                                            {"file.mdb"}})
        EXPECT_FALSE(readStart(line).mistake.isEmpty()) << qPrintable(line.join(' '));
}

class ExecutableTest : public setup_test::SetupTest {
protected:
    struct Ending {
        int code;
        QByteArray out, err;
    };
    /// Runs the program as a user with a home of his own, without a display.
    Ending run(const QStringList& arguments, const QString& environmentFolder = {}) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "SORVANTO_FOLDER"})
            environment.remove(name);
        environment.insert("XDG_DATA_HOME", path("data"));
        if (!environmentFolder.isEmpty())
            environment.insert("SORVANTO_FOLDER", environmentFolder);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(tools() + "/sorvanto", arguments);
        EXPECT_TRUE(process.waitForFinished());
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
};

TEST_F(ExecutableTest, VersionAndHelpNeedNoDisplay) {
    const Ending version = run({"--version"});
    EXPECT_EQ(version.out, "sorvanto " + platform::programVersion().toUtf8() + "\n");
    EXPECT_EQ(version.code, 0);
    const Ending help = run({"--help"});
    EXPECT_TRUE(help.out.contains("--folder DIR"));
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(run({"-h"}).out, help.out);
    EXPECT_FALSE(has("data"));
}

TEST_F(ExecutableTest, EveryToolTellsTheSameVersion) {
    for (const QString& tool : {u"sorvanto-db"_s, u"sorvanto-report"_s, u"sorvanto-mixersim"_s}) {
        QProcess process;
        process.start(tools() + '/' + tool, {"--version"});
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.readAllStandardOutput(), (tool + ' ' + platform::programVersion() + '\n').toUtf8());
        EXPECT_EQ(process.exitCode(), 0);
    }
}

TEST_F(ExecutableTest, AWrongLineIsRefused) {
    const Ending wrong = run({"--version", "--fodler"});
    EXPECT_EQ(wrong.code, 2);
    EXPECT_TRUE(wrong.err.contains("fodler"));
    EXPECT_TRUE(wrong.out.isEmpty());
}

TEST_F(ExecutableTest, ItLaysOutTheUsersFolderTheEnvironmentsOrTheOneAsked) {
    const Ending plain = run({"--lay-out"});
    EXPECT_EQ(plain.code, 0) << plain.err.constData();
    EXPECT_TRUE(has("data/sorvanto/GermanTranslation.xml") && has("data/sorvanto/sorvanto.mdb"));
    EXPECT_EQ(run({"--lay-out"}, path("environment")).code, 0);
    EXPECT_TRUE(has("environment/dbupdate.xml"));
    EXPECT_EQ(run({"--lay-out", "--folder", path("asked")}, path("other")).code, 0);
    EXPECT_TRUE(has("asked/dbupdate.xml"));
    EXPECT_FALSE(has("other"));
}

TEST_F(ExecutableTest, AFolderThatCantBeMadeIsSaid) {
    write("file", "");
    const Ending refused = run({"--lay-out", "--folder", path("file")});
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.err.contains(path("file").toUtf8()));
}

}  // namespace
}  // namespace sorvanto
