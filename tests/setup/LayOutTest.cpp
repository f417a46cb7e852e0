// A program folder from delivered files: a new one, an older one, one that is in the way.
#include "setup/LayOut.h"

#include "SetupTest.h"
#include "platform/basic/RuntimeError.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using setup_test::SetupTest;

const QByteArray steps = "<Updates/>";

QByteArray german(const QByteArray& save) {
    return "<Translations Language=\"German\">\n<Translate English=\"Save\" Translated=\"" + save +
           "\"/>\n</Translations>\n";
}

class LayOutTest : public SetupTest {
protected:
    void SetUp() override {
        SetupTest::SetUp();
        write("delivered/dbupdate.xml", steps);
        write("delivered/GermanTranslation.xml", german("Speichern"));
        write("delivered/former.json", R"({"German": {"Save": ["Sichern"]}})");
    }
    QString folder() const { return path("home/program"); }
    QStringList problems() const { return layOut(delivered(), folder(), tools()); }
    QByteArray own(const QString& name) const { return read(u"home/program/"_s + name); }
    QStringList names() const { return QDir(folder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }
};

TEST_F(LayOutTest, ANewFolderIsItsOwnersAloneAndHasAnEmptyDatabase) {
    EXPECT_EQ(problems(), QStringList());
    EXPECT_EQ(names().join(' '), "dbupdate.xml delivered.txt GermanTranslation.xml ports sorvanto.mdb");
    EXPECT_EQ(own("dbupdate.xml"), steps);
    EXPECT_EQ(own("GermanTranslation.xml"), german("Speichern"));
    EXPECT_TRUE(own("sorvanto.mdb").startsWith("SQLite format 3"));
    struct stat found {};
    ASSERT_EQ(::stat(QFile::encodeName(folder()).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0700u);
}

TEST_F(LayOutTest, PipesInThePlaceOfItsFilesKeepNobodyWaiting) {
    ASSERT_EQ(problems(), QStringList());
    for (const char* name : {"dbupdate.xml", "delivered.txt", "GermanTranslation.xml", "sorvanto.lock"}) {
        const QByteArray file = QFile::encodeName(folder() + '/'_L1 + QLatin1String(name));
        ::unlink(file.constData());
        ASSERT_EQ(::mkfifo(file.constData(), 0600), 0);
    }
    const QStringList told = keepUpToDate(delivered(), folder(), tools());
    ASSERT_EQ(told.size(), 2) << told.join('\n').toStdString();
    EXPECT_TRUE(told.at(0).endsWith("dbupdate.xml could not be brought up to date: it is no regular file"));
    EXPECT_TRUE(told.at(1).contains("GermanTranslation.xml could not be brought up to date: "));
}

TEST_F(LayOutTest, AMissingDatabaseIsNeverReplacedByAnEmptyOne) {
    for (const char* name : {"options.xml", "dbupdate.xml"}) {
        ASSERT_TRUE(QDir(folder()).removeRecursively());
        write(u"home/program/"_s + QLatin1String(name), steps);
        EXPECT_EQ(problems(), QStringList());
        EXPECT_FALSE(has("home/program/sorvanto.mdb")) << name;
    }
}

TEST_F(LayOutTest, ADatabaseStaysToTheByte) {
    write("home/program/sorvanto.mdb", "records");
    EXPECT_EQ(problems(), QStringList());
    EXPECT_EQ(own("sorvanto.mdb"), "records");
}

TEST_F(LayOutTest, FormerStepsAreKeptBesideTheNewOnes) {
    write("home/program/dbupdate.xml", "<Updates>mine</Updates>");
    EXPECT_EQ(problems(), QStringList());
    EXPECT_EQ(own("dbupdate.xml"), steps);
    EXPECT_EQ(own("dbupdate.xml.before"), "<Updates>mine</Updates>");
    write("home/program/dbupdate.xml.before", "older");
    EXPECT_EQ(problems(), QStringList());
    EXPECT_EQ(own("dbupdate.xml.before"), "older") << "equal steps are left alone";
}

TEST_F(LayOutTest, LanguagesAreBroughtUpToDateAndAnOwnWordingStays) {
    write("home/program/GermanTranslation.xml", german("Sichern"));
    EXPECT_EQ(problems(), QStringList());
    EXPECT_TRUE(own("GermanTranslation.xml").contains("Speichern"));
    write("home/program/GermanTranslation.xml", german("Los!"));
    EXPECT_EQ(problems(), QStringList());
    EXPECT_EQ(own("GermanTranslation.xml"), german("Los!"));
}

TEST_F(LayOutTest, ABrokenLanguageFileIsSaidAndLeftAsItIs) {
    write("home/program/GermanTranslation.xml", "<Translations");
    ASSERT_EQ(problems().size(), 1);
    EXPECT_TRUE(problems().constFirst().contains(folder() + "/GermanTranslation.xml"));
    EXPECT_EQ(own("GermanTranslation.xml"), "<Translations");
    EXPECT_EQ(own("dbupdate.xml"), steps) << "the other files are brought all the same";
    EXPECT_FALSE(has("home/program/delivered.txt")) << "so that the next start tries again";
}

TEST_F(LayOutTest, WithoutItsToolTheDatabaseIsMissedAndTheRestIsThere) {
    const QStringList found = layOut(delivered(), folder(), path("nowhere"));
    ASSERT_EQ(found.size(), 1);
    EXPECT_TRUE(found.constFirst().contains("sorvanto-db"));
    EXPECT_EQ(own("dbupdate.xml"), steps);
}

TEST_F(LayOutTest, AFileInTheFoldersPlaceIsRefused) {
    write("home/program", "a file");
    EXPECT_THROW(problems(), platform::RuntimeError);
    EXPECT_EQ(read("home/program"), "a file");
}

class KeepUpToDateTest : public LayOutTest {
protected:
    QStringList keep() const { return keepUpToDate(delivered(), folder(), tools()); }
};

TEST_F(KeepUpToDateTest, TheSameDeliveryIsLookedAtOnce) {
    EXPECT_EQ(keep(), QStringList());
    ASSERT_TRUE(QFile::remove(folder() + "/GermanTranslation.xml"));
    EXPECT_EQ(keep(), QStringList());
    EXPECT_FALSE(has("home/program/GermanTranslation.xml"));
    write("delivered/GermanTranslation.xml", german("Anders"));  // another size: another delivery
    EXPECT_EQ(keep(), QStringList());
    EXPECT_EQ(own("GermanTranslation.xml"), german("Anders"));
}

TEST_F(KeepUpToDateTest, AProgramAtWorkIsNotDisturbed) {
    EXPECT_EQ(keep(), QStringList());
    const int lock =
        ::open(QFile::encodeName(folder() + "/sorvanto.lock").constData(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::flock(lock, LOCK_EX | LOCK_NB), 0);
    write("delivered/dbupdate.xml", "<Updates>newer</Updates>");
    EXPECT_EQ(keep(), QStringList());
    EXPECT_EQ(own("dbupdate.xml"), steps);
    ::close(lock);
    EXPECT_EQ(keep(), QStringList());
    EXPECT_EQ(own("dbupdate.xml"), "<Updates>newer</Updates>");
}

}  // namespace
}  // namespace sorvanto
