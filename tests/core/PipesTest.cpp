// The program itself on a folder where pipes stand in the places of its files: it starts, tells of them, and works.
#include "TempProgramFolder.h"

#include "db/DatabaseFile.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestStart = 60'000;  // milliseconds; a start takes a second

TEST(Pipes, InThePlacesOfItsFilesKeepNoStartWaiting) {
    const support::TempProgramFolder folder;
    sorvanto::createSample(folder.path("sorvanto.mdb"));
    ASSERT_TRUE(QDir(folder.path()).mkpath("ports"));
    ASSERT_TRUE(QFile::link("/nowhere/COM1", folder.path("ports/COM1")));
    folder.write("options.xml",
                 u"<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation>%1"
                 "</DBLocation><Language>0</Language></Options><Pharmacy><StoreName>M</StoreName>"
                 "<Phone>1</Phone><ShowPatients>1</ShowPatients></Pharmacy></Configuration>"_s
                     .arg(folder.path("sorvanto.mdb"))
                     .toUtf8());
    for (const char* name :
         {"copies.ini", "copies.ini.lock", "window.ini", "window.ini.lock", "errors.log", "dbupdate.xml",
          "delivered.txt", "EnglishTranslation.xml", "options.last-good.xml", "backups/updates.txt",
          "mixes/00000001.xml", "mixes/closed/20260307-000000-00000001.xml",
          "drafts/00000000000000000000000000000001.json"}) {
        const QString path = folder.path(QLatin1String(name));
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        ASSERT_EQ(::mkfifo(path.toLocal8Bit().constData(), 0600), 0) << name;
    }

    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationDirPath() + "/sorvanto", {"--folder", folder.path()});
    const auto copies = [&] {
        return QDir(folder.path("backups")).entryList({"sorvanto-*.mdb"}, QDir::Files);
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return !copies().isEmpty(); }, longestStart)) << "the start hangs";
    EXPECT_EQ(program.state(), QProcess::Running);
    program.kill();
    program.waitForFinished();
}

}  // namespace
