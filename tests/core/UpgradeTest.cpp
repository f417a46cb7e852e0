// A program folder of version 1.0 in today's hands: laid out over as ./run does it, then started.
#include "Child.h"
#include "TestProgram.h"
#include "core/CopySettings.h"
#include "core/frmMain.h"
#include "mixer/ctlSorvanto.h"
#include "platform/basic/RuntimeError.h"
#include "platform/xml/XmlDocument.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

const QString stored = QString::fromLatin1(SORVANTO_SOURCE_DIR "/tests/version-1.0/");

QByteArray storedFile(const QString& name) {
    QFile file(stored + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    return file.readAll();
}

class UpgradeTest : public support::TestProgram {
protected:
    QByteArray optionsXml() const override { return {}; }

    void SetUp() override {
        TestProgram::SetUp();
        for (const QString& file : {u"dbupdate.xml"_s, u"GermanTranslation.xml"_s, u"mixes/3FA21C09.xml"_s}) {
            ASSERT_TRUE(QDir().mkpath(QFileInfo(folder.path(file)).path()));
            folder.write(file, storedFile(file));
        }
        options = storedFile("options.xml").replace("@FOLDER@", folder.path().toUtf8());
        folder.write("options.xml", options);
        QProcess engine;
        engine.start("sqlite3", {databasePath()});
        engine.write(storedFile("sorvanto.sql"));
        engine.closeWriteChannel();
        ASSERT_TRUE(engine.waitForFinished());
        ASSERT_EQ(engine.readAllStandardError().toStdString(), "");
        // The mixer's port leads nowhere, so that no real device of this computer is opened.
        ASSERT_TRUE(QDir().mkpath(folder.path("ports")));
        ASSERT_TRUE(QFile::link("/nowhere/COM1", folder.path("ports/COM1")));
        before = records();
    }
    void TearDown() override {
        window.reset();
        TestProgram::TearDown();
    }
    void layOut() const {
        QProcess script;
        script.start(QString::fromLatin1(SORVANTO_SOURCE_DIR "/scripts/lay-out.sh"),
                     {QCoreApplication::applicationDirPath(), folder.path()});
        ASSERT_TRUE(script.waitForFinished(60'000));
        ASSERT_EQ(script.exitCode(), 0) << script.readAllStandardError().constData();
    }
    void start() {
        window.reset();
        basMain::Options.reset();
        basMain::Language.reset();
        basMain::gConnection = std::make_shared<platform::Connection>();
        Parts parts = realParts(context);
        parts.reporter = [this] { return reporter; };
        window = std::make_unique<frmMain>(parts);
        window->Form_Load();
    }
    /// Every value of every table of 1.0 with its storage class, but the version of the file.
    QString records() const {
        QStringList values;
        for (const char* table : {"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs"}) {
            QStringList columns;
            for (const QStringList& column : sql(u"SELECT name FROM pragma_table_info('%1')"_s.arg(table)))
                columns << u"typeof(%1) || ':' || coalesce(hex(%1), '')"_s.arg(column.first());
            values << QLatin1String(table) + '\n'_L1 +
                          sqlText(u"SELECT %1 FROM %2 ORDER BY rowid"_s.arg(columns.join(", "), table));
        }
        return values.join('\n');
    }
    QStringList copies() const {
        return QDir(folder.path("backups")).entryList({"*before-update*.mdb"}, QDir::Files);
    }
    QString german(const char* english) const {
        const QString file = QString::fromUtf8(folder.read("GermanTranslation.xml"));
        const QString start = u"English=\"%1\" Translated=\""_s.arg(english);
        const qsizetype at = file.indexOf(start) + start.size();
        return file.contains(start) ? file.mid(at, file.indexOf('"', at) - at) : QString();
    }

    void expectTheMixOnOffer() const {
        EXPECT_NE(window->mixer().findChild<QPushButton*>("mixerLogMix"), nullptr);
        const QString offer = support::child<QLabel>(window->mixer(), "mixerOffer")->text();
        EXPECT_TRUE(offer.startsWith("Hydrocortisone 1% Cream") && offer.endsWith("SV04269012"))
            << qPrintable(offer);
        EXPECT_TRUE(window->mixer().reconciliation().complete());
        EXPECT_EQ(window->mixer().reconciliation().onOffer, 1);
    }

    QByteArray options;
    QString before;
    std::unique_ptr<frmMain> window;
};

TEST_F(UpgradeTest, TheFolderGetsWhatIsNewAndKeepsItsUsersOwn) {
    ASSERT_GT(sqlText("SELECT count(*) FROM Log").toInt(), 5);
    layOut();
    EXPECT_EQ(folder.read("options.xml"), options);
    EXPECT_EQ(records(), before);
    EXPECT_EQ(german("Strength"), "Gehalt");
    EXPECT_EQ(german("Our own shelf"), "Unser Regal");
    EXPECT_EQ(german("Chemicals"), "Ausgangsstoffe") << "a wording that 1.0 had delivered and nobody changed";
    EXPECT_FALSE(german("Open for reading only: %1").isEmpty()) << "a new text";
    EXPECT_TRUE(folder.read("dbupdate.xml").contains("To=\"1.2\""));
    EXPECT_EQ(folder.read("dbupdate.xml.before"), storedFile("dbupdate.xml"));
    EXPECT_EQ(folder.read("mixes/3FA21C09.xml"), storedFile("mixes/3FA21C09.xml"));
}

TEST_F(UpgradeTest, TextsThatNobodyChangedAreThoseOfTodayInEachLanguage) {
    const auto textsOf = [](const QByteArray& xml) {
        const auto document = platform::XmlDocument::create();
        EXPECT_TRUE(document->loadXML(QString::fromUtf8(xml)));
        QMap<QString, QString> texts;
        for (const platform::XmlNode& entry : document->getElementsByTagName(u"Translate"_s))
            texts.insert(entry.attribute(u"English"_s), entry.attribute(u"Translated"_s));
        return texts;
    };
    const QStringList names = {u"French"_s,  u"Swiss"_s,      u"Italian"_s,
                               u"Spanish"_s, u"Portuguese"_s, u"Russian"_s};
    for (const QString& name : names)
        folder.write(name + u"Translation.xml"_s, storedFile(name + u"Translation.xml"_s));
    layOut();
    for (const QString& name : names + QStringList{u"German"_s}) {
        const QString fileName = name + u"Translation.xml"_s;
        QFile delivered(QStringLiteral(SORVANTO_SOURCE_DIR "/languages/") + fileName);
        ASSERT_TRUE(delivered.open(QIODevice::ReadOnly));
        const auto now = textsOf(delivered.readAll()), own = textsOf(folder.read(fileName));
        EXPECT_GT(now.size(), 700);
        for (auto text = now.begin(); text != now.end(); ++text) {
            if (name != "German"_L1 || text.key() != "Strength"_L1) {
                EXPECT_EQ(own.value(text.key()).toStdString(), text.value().toStdString())
                    << qPrintable(name + u": "_s + text.key());
            }
        }
    }
}

TEST_F(UpgradeTest, TheFirstStartBringsTheDatabaseUpToDateAndLosesNothing) {
    layOut();
    start();
    EXPECT_EQ(sqlText("SELECT opt_Version FROM Options").toStdString(), "1.2");
    EXPECT_EQ(sqlText("PRAGMA user_version").toStdString(), "12000");
    EXPECT_EQ(sqlText("SELECT length(fid_Identity), fid_Changes FROM FileIdentity").toStdString(), "32|0");
    EXPECT_EQ(sqlText("PRAGMA integrity_check").toStdString(), "ok");
    EXPECT_EQ(records(), before);
    EXPECT_EQ(CopySettings::identityOf(databasePath()), sqlText("SELECT fid_Identity FROM FileIdentity"));
    ASSERT_EQ(copies().size(), 1);
    const QString copy = folder.path("backups/" + copies().first());
    EXPECT_EQ(support::rowsText(support::runSql(copy, "SELECT opt_Version FROM Options")).toDouble(), 1.0);
    EXPECT_EQ(folder.read("options.xml"), options);
    EXPECT_EQ(translated("Strength"), "Gehalt");
    const QString digits = sqlText("SELECT fid_Identity FROM FileIdentity").left(8);
    EXPECT_EQ(support::child<QLabel>(*window, "lblDatabase")->toolTip().section('\n', -1),
              "Kennung " + digits);
    EXPECT_TRUE(support::child<QLabel>(*window, "lblReadingOnly")->isHidden());
    expectTheMixOnOffer();

    const QString identity = sqlText("SELECT * FROM FileIdentity");
    layOut();
    start();
    EXPECT_EQ(sqlText("SELECT * FROM FileIdentity"), identity) << "nothing more at the second start";
    EXPECT_EQ(copies().size(), 1);
    EXPECT_EQ(records(), before);
    EXPECT_EQ(german("Strength"), "Gehalt");
    EXPECT_EQ(german("Our own shelf"), "Unser Regal");
    expectTheMixOnOffer();
}

TEST_F(UpgradeTest, AnArchiveIsOpenForReadingOnly) {
    layOut();
    start();
    sql("UPDATE FileIdentity SET fid_Parent = 'ffffffffffffffffffffffffffffffff'");
    start();
    EXPECT_EQ(support::child<QLabel>(*window, "lblReadingOnly")->text(),
              "Nur zum Lesen geöffnet: " + databasePath() + " ist ein Archiv.");
    EXPECT_THROW(openDB()->execute("DELETE FROM Patient"), platform::RuntimeError);
}

}  // namespace
