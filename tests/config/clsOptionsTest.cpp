// options.xml: its tree, its defaults, its conversions, its four repairing elements, and broken files.
#include "config/clsOptions.h"

#include "config/LastGoodOptions.h"
#include "platform/basic/RuntimeError.h"
#include "shared/basMain.h"
#include "support/Golden.h"
#include "support/Hindrances.h"
#include "support/TestProgram.h"

#include <sys/stat.h>

using sorvanto::clsOptions;
namespace basMain = sorvanto::basMain;
namespace error = platform::error;
namespace lastGoodOptions = sorvanto::lastGoodOptions;

namespace {

class clsOptionsTest : public support::TestProgram {
protected:
    /// Puts the file there and loads it as the program's start does.
    void load(const QByteArray& xml) {
        basMain::Options.reset();
        folder.write("options.xml", xml);
        basMain::Options = std::make_shared<clsOptions>(context);
    }
    /// The delivered tree without one element.
    void loadWithout(const QByteArray& element) {
        QByteArray xml = optionsXml();
        const auto start = xml.indexOf("<" + element);
        auto end = xml.indexOf("</" + element + ">", start);
        end = end < 0 ? xml.indexOf("/>", start) + 2 : end + element.size() + 3;
        load(xml.remove(start, end - start));
    }
    void loadWith(const QByteArray& element, const QByteArray& text) {
        QByteArray xml = optionsXml();
        const auto start = xml.indexOf("<" + element + ">") + element.size() + 2;
        load(xml.replace(start, xml.indexOf("</", start) - start, text));
    }
    QByteArray file() const { return folder.read("options.xml"); }
    clsOptions& options() const { return *basMain::Options; }
};

std::int32_t failureOf(const std::function<void()>& access) {
    try {
        access();
    } catch (const platform::RuntimeError& failure) {
        return failure.number();
    }
    return 0;
}

struct TextProperty {
    const char* element;
    QString (*get)(clsOptions&);
    void (*set)(clsOptions&, const QString&);
    const char* value;
};

#define TEXT_PROPERTY(name, element, value)                                                                  \
    TextProperty {                                                                                           \
        element, [](clsOptions& o) { return o.name(); },                                                     \
            [](clsOptions& o, const QString& text) { o.name(text); }, value                                  \
    }

const TextProperty textProperties[] = {
    TEXT_PROPERTY(DefPrinter, "DefPrinter", ""),
    TEXT_PROPERTY(DefCurrency, "DefCurrency", "$"),
    TEXT_PROPERTY(StoreName, "StoreName", "Kelmar Systems"),
    TEXT_PROPERTY(Address, "Address", "418 Larkspur Ct."),
    TEXT_PROPERTY(City, "City", "Fenwick"),
    TEXT_PROPERTY(State, "State", "ZZ"),
    TEXT_PROPERTY(Zip, "PostalCode", "54321"),
    TEXT_PROPERTY(Phone, "Phone", "(555)010-0188"),
    TEXT_PROPERTY(Fax, "Fax", "(555)010-0189"),
    TEXT_PROPERTY(DEA, "DEA", "123456789"),
};

struct NumberProperty {
    const char* element;
    std::int16_t (*get)(clsOptions&);
    void (*set)(clsOptions&, std::int16_t);
};

#define NUMBER_PROPERTY(name)                                                                                \
    NumberProperty {                                                                                         \
#name, [](clsOptions & o) { return o.name(); }, [](clsOptions & o,                                   \
                                                           std::int16_t number) { o.name(number); }          \
    }

const NumberProperty numberProperties[] = {NUMBER_PROPERTY(Language), NUMBER_PROPERTY(CommPort),
                                           NUMBER_PROPERTY(ShowPatients), NUMBER_PROPERTY(OverrideSpeed)};

TEST_F(clsOptionsTest, ReadsEachTextFromItsElement) {
    for (const auto& property : textProperties)
        EXPECT_EQ(property.get(options()), property.value) << property.element;
    EXPECT_EQ(options().DBLocation(), databasePath());
}

TEST_F(clsOptionsTest, TextsComeBackAsTheyWereSetAndSurviveASave) {
    const QString text = QString::fromUtf8(" O'Neill & <Söhne> \"x\" ");
    for (const auto& property : textProperties)
        property.set(options(), text);
    options().DBLocation(text);
    options().saveOptions();
    load(file());
    for (const auto& property : textProperties)
        EXPECT_EQ(property.get(options()), text) << property.element;
    EXPECT_EQ(options().DBLocation(), text);
}

TEST_F(clsOptionsTest, NumbersAreStoredAsDecimalText) {
    for (const auto& property : numberProperties) {
        for (const std::int16_t number : std::initializer_list<std::int16_t>{0, 1, -1, 7, 32767, -32768}) {
            property.set(options(), number);
            EXPECT_EQ(property.get(options()), number) << property.element;
        }
        property.set(options(), 12);
        options().saveOptions();
        const QByteArray element(property.element);
        EXPECT_TRUE(file().contains("<" + element + ">12</" + element + ">")) << property.element;
    }
}

TEST_F(clsOptionsTest, SettersReachTheMemoryAlone) {
    const QByteArray before = file();
    options().City("Elsewhere");
    options().ShowPatients(0);
    options().DBLocation("x.mdb");
    EXPECT_EQ(file(), before);
    EXPECT_EQ(options().City(), "Elsewhere");
    options().saveOptions();
    EXPECT_TRUE(file().contains("<City>Elsewhere</City>"));
}

TEST_F(clsOptionsTest, ZipIsTheElementPostalCode) {
    load(optionsXml().replace("<PostalCode>", "<Zip>99</Zip><PostalCode>"));
    EXPECT_EQ(options().Zip(), "54321");
    options().Zip("11111");
    options().saveOptions();
    EXPECT_TRUE(file().contains("<Zip>99</Zip><PostalCode>11111</PostalCode>"));
}

TEST_F(clsOptionsTest, LanguageForgivesAnyText) {
    const std::pair<const char*, int> table[] = {{"3abc", 3}, {"abc", 0}, {"", 0},    {"2.6", 3},
                                                 {"2.5", 2},  {" 4", 4},  {"-1", -1}, {"9", 9}};
    for (const auto& [text, number] : table) {
        loadWith("Language", text);
        EXPECT_EQ(options().Language(), number) << text;
    }
}

TEST_F(clsOptionsTest, LanguageStillNeedsItsElementAndItsRange) {
    loadWithout("Language");
    EXPECT_EQ(failureOf([&] { options().Language(); }), error::objectNotSet);
    loadWith("Language", "40000");
    EXPECT_EQ(failureOf([&] { options().Language(); }), error::overflow);
}

TEST_F(clsOptionsTest, TheOtherNumbersFailOnANonNumber) {
    for (const auto& property : numberProperties) {
        if (QByteArray(property.element) == "Language")
            continue;
        for (const char* text : {"x", "", "3x"}) {
            loadWith(property.element, text);
            EXPECT_EQ(failureOf([&] { property.get(options()); }), error::typeMismatch)
                << property.element << " " << text;
        }
        loadWith(property.element, "40000");
        EXPECT_EQ(failureOf([&] { property.get(options()); }), error::overflow) << property.element;
        loadWith(property.element, " 2 ");
        EXPECT_EQ(property.get(options()), 2) << property.element;
    }
}

TEST_F(clsOptionsTest, AMissingElementFailsToTheCaller) {
    for (const auto& property : textProperties) {
        if (QByteArray(property.element).startsWith("Def"))
            continue;
        loadWithout(property.element);
        EXPECT_EQ(failureOf([&] { property.get(options()); }), error::objectNotSet) << property.element;
        EXPECT_EQ(failureOf([&] { property.set(options(), "x"); }), error::objectNotSet) << property.element;
        EXPECT_FALSE(file().contains("<" + QByteArray(property.element))) << property.element;
    }
    for (const char* element : {"CommPort", "DBLocation"}) {
        loadWithout(element);
        EXPECT_EQ(failureOf([&] { options().CommPort(), options().DBLocation(); }), error::objectNotSet);
    }
}

struct Repair {
    const char* element;
    const char* text;
    const char* parentEnd;
    void (*read)(clsOptions&);
    void (*write)(clsOptions&);
    const char* written;
};

const Repair repairs[] = {
    {"DefPrinter", "0", "</Options>", [](clsOptions& o) { EXPECT_EQ(o.DefPrinter(), "0"); },
     [](clsOptions& o) { o.DefPrinter("9"); }, "9"},
    {"DefCurrency", "$", "</Options>", [](clsOptions& o) { EXPECT_EQ(o.DefCurrency(), "$"); },
     [](clsOptions& o) { o.DefCurrency("9"); }, "9"},
    {"ShowPatients", "0", "</Pharmacy>", [](clsOptions& o) { EXPECT_EQ(o.ShowPatients(), 0); },
     [](clsOptions& o) { o.ShowPatients(9); }, "9"},
    {"OverrideSpeed", "0", "</Pharmacy>", [](clsOptions& o) { EXPECT_EQ(o.OverrideSpeed(), 0); },
     [](clsOptions& o) { o.OverrideSpeed(9); }, "9"},
};

class RepairTest : public clsOptionsTest, public ::testing::WithParamInterface<Repair> {
protected:
    QByteArray element(const char* text) const {
        return "<" + QByteArray(GetParam().element) + ">" + text + "</" + GetParam().element + ">";
    }
    QByteArray atEnd(const char* text) const { return element(text) + GetParam().parentEnd; }
};

TEST_P(RepairTest, AReadAddsTheElementAtTheEndAndSavesAtOnce) {
    loadWithout(GetParam().element);
    options().City("Unsaved");
    GetParam().read(options());
    EXPECT_TRUE(file().contains(atEnd(GetParam().text))) << file().toStdString();
    EXPECT_TRUE(file().contains("<City>Unsaved</City>"));
}

TEST_P(RepairTest, ASetterSavesTheDefaultAndKeepsItsOwnValueInMemory) {
    loadWithout(GetParam().element);
    GetParam().write(options());
    EXPECT_TRUE(file().contains(atEnd(GetParam().text))) << file().toStdString();
    options().saveOptions();
    EXPECT_TRUE(file().contains(atEnd(GetParam().written))) << file().toStdString();
}

TEST_P(RepairTest, WithoutItsParentItFailsAndNothingIsWritten) {
    const QByteArray xml = "<Configuration><Version>1</Version></Configuration>";
    load(xml);
    EXPECT_EQ(failureOf([&] { GetParam().write(options()); }), error::objectNotSet);
    expectReport("clsOptions:createNode");
    EXPECT_EQ(file(), xml);
}

TEST_P(RepairTest, OnAFullDiskTheElementStaysInMemory) {
    loadWithout(GetParam().element);
    const QByteArray before = file();
    {
        const support::FullDisk full;
        GetParam().read(options());
    }
    EXPECT_EQ(expectReport("clsOptions:createNode").number, QString::number(error::diskFull));
    EXPECT_EQ(file(), before);
}

INSTANTIATE_TEST_SUITE_P(Elements, RepairTest, ::testing::ValuesIn(repairs),
                         [](const auto& row) { return std::string(row.param.element); });

TEST_F(clsOptionsTest, TheFirstElementOfThatNameIsTheParent) {
    QByteArray xml = optionsXml();
    xml.replace("<DefCurrency>$</DefCurrency>", "").replace("</Configuration>", "<Options/></Configuration>");
    load(xml);
    EXPECT_EQ(options().DefCurrency(), "$");
    EXPECT_TRUE(file().contains("<DefCurrency>$</DefCurrency></Options><Pharmacy>"));
}

class NewFileTest : public clsOptionsTest {
protected:
    QByteArray optionsXml() const override { return {}; }
    void start(const QString& clicked) {
        asker.expectModal("frmWizard", [this, clicked](QWidget& wizard) {
            EXPECT_FALSE(folder.has("options.xml"));
            EXPECT_FALSE(basMain::Language);
            if (clicked.isEmpty())
                wizard.close();
            else
                wizard.findChild<QAbstractButton*>(clicked)->click();
        });
        basMain::Options = std::make_shared<clsOptions>(context);
    }
};

TEST_F(NewFileTest, HasTheWholeTree) {
    start("optLanguage_2");
    support::expectGolden("config/options.xml", QString::fromUtf8(file()).replace(folder.path(), "FOLDER"));
    EXPECT_EQ(options().DBLocation(), databasePath());
    EXPECT_EQ(options().Language(), 2);
    EXPECT_EQ(options().ShowPatients(), 1);
    EXPECT_EQ(options().DefCurrency(), "");
    EXPECT_EQ(options().DefPrinter(), "");
}

TEST_F(NewFileTest, AClosedWizardMeansEnglish) {
    start("");
    EXPECT_TRUE(file().contains("<Language>0</Language>"));
}

TEST_F(NewFileTest, PolishIsTheNumberOfSwiss) {
    start("optLanguage_7");
    startConfiguration(options().Language());
    EXPECT_TRUE(folder.read("SwissTranslation.xml").contains("<Translations Language=\"Swiss\""));
}

TEST_F(NewFileTest, IsNotWrittenToAFullDiskAndTheOptionsServeThisRun) {
    {
        const support::FullDisk full;
        start("optLanguage_3");
    }
    EXPECT_EQ(expectReport("clsOptions:saveOptions").number, QString::number(error::diskFull));
    EXPECT_FALSE(folder.has("options.xml"));
    EXPECT_EQ(options().Language(), 3);
    EXPECT_EQ(options().City(), "Fenwick");
}

TEST_F(NewFileTest, TheWizardIsNotAskedAgainAtTheSecondStart) {
    start("optLanguage_1");
    const QByteArray first = file();
    basMain::Options = std::make_shared<clsOptions>(context);
    EXPECT_EQ(file(), first);
    EXPECT_EQ(options().Language(), 1);
}

class BrokenOptionsTest : public clsOptionsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(BrokenOptionsTest, EachReadFailsAndTheFileStaysAsItIs) {
    const QByteArray broken(GetParam());
    load(broken);
    if (!options().problem().isEmpty()) {
        const QString told = expectReport("clsOptions:Class_Initialize").description;
        EXPECT_TRUE(told.contains("options.xml can't be read")) << told.toStdString();
    }
    for (const auto& property : textProperties) {
        EXPECT_EQ(failureOf([&] { property.get(options()); }), error::objectNotSet) << property.element;
        EXPECT_EQ(failureOf([&] { property.set(options(), "x"); }), error::objectNotSet) << property.element;
    }
    for (const auto& property : numberProperties)
        EXPECT_EQ(failureOf([&] { property.get(options()); }), error::objectNotSet) << property.element;
    EXPECT_EQ(failureOf([&] { options().DBLocation(); }), error::objectNotSet);
    expectReports("clsOptions:createNode");
    options().saveOptions();
    basMain::Options.reset();
    EXPECT_EQ(file(), broken);
}

INSTANTIATE_TEST_SUITE_P(Files, BrokenOptionsTest,
                         ::testing::Values("garbage", "", "<Configuration><Options>", "<Configuration/>",
                                           "<Configuration><Version>1</Version></Configuration>", "<a/><b/>",
                                           "\xff\xfe\x00", "<Other><Thing/></Other>"));

TEST_F(clsOptionsTest, TheLastGoodFileComesBackAndTheBrokenOneIsKept) {
    options().City("Elsewhere");
    options().saveOptions();
    const QByteArray good = file();
    load("<Configuration><Opt");
    EXPECT_TRUE(expectReport("clsOptions:Class_Initialize").description.contains("line 1"));
    EXPECT_FALSE(options().problem().isEmpty());
    options().takeLastGood();
    EXPECT_EQ(options().problem(), "");
    EXPECT_EQ(options().City(), "Elsewhere");
    EXPECT_EQ(file(), good);
    EXPECT_EQ(folder.read("options.broken.xml"), "<Configuration><Opt");
}

TEST_F(clsOptionsTest, ABrokenFileDoesNotBecomeTheLastGoodOne) {
    const QByteArray good = file();
    load("<Configuration><Opt");
    expectReport("clsOptions:Class_Initialize");
    options().saveOptions();
    EXPECT_EQ(folder.read("options.last-good.xml"), good);
}

TEST_F(clsOptionsTest, AnotherFileInTheOptionsPlaceDoesNotBecomeTheLastGoodOne) {
    const QByteArray good = file();
    for (const char* other : {"<Other><Thing/></Other>", "<Configuration><Options/></Configuration>",
                              "<Translations><Options/><Pharmacy/></Translations>"}) {
        load(other);
        basMain::Options.reset();  // saves
        EXPECT_EQ(folder.read("options.last-good.xml"), good) << other;
    }
    folder.write("options.last-good.xml", "<Other><Thing/></Other>");
    EXPECT_FALSE(lastGoodOptions::kept().isValid()) << "nor is it offered";
}

// A start after a kill in between would be taken for the first one.
TEST_F(clsOptionsTest, TheBrokenFileStaysUntilTheLastGoodOneIsThere) {
    load("<Configuration><Opt");
    expectReport("clsOptions:Class_Initialize");
    {
        const support::FullDisk full;
        options().takeLastGood();
    }
    expectReport("clsOptions:takeLastGood");
    EXPECT_EQ(file(), "<Configuration><Opt");
    EXPECT_EQ(folder.read("options.broken.xml"), "<Configuration><Opt");
    options().takeLastGood();
    EXPECT_EQ(options().problem(), "");
}

TEST_F(clsOptionsTest, APipeInTheFilesPlaceKeepsNobodyWaiting) {
    basMain::Options.reset();
    QFile::remove(folder.path("options.xml"));
    ASSERT_EQ(::mkfifo(folder.path("options.xml").toLocal8Bit().constData(), 0600), 0);
    basMain::Options = std::make_shared<clsOptions>(context);
    EXPECT_TRUE(expectReport("clsOptions:Class_Initialize").description.contains("no regular file"));
}

TEST_F(clsOptionsTest, AFileThatIsTooLargeIsToldWithItsSize) {
    basMain::Options.reset();
    QFile large(folder.path("options.xml"));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(100'000'000));
    large.close();
    basMain::Options = std::make_shared<clsOptions>(context);
    EXPECT_TRUE(
        expectReport("clsOptions:Class_Initialize").description.contains("it has 100 MB, at most 16"));
}

TEST_F(clsOptionsTest, ASaveThatFailsLeavesTheOldFileWhole) {
    const QByteArray before = file();
    options().City("Elsewhere");
    {
        const support::FullDisk full(100);
        options().saveOptions();
    }
    EXPECT_EQ(expectReport("clsOptions:saveOptions").number, QString::number(error::diskFull));
    EXPECT_EQ(file(), before);
    EXPECT_EQ(QDir(folder.path()).entryList({"options.xml*"}), QStringList("options.xml"));
    options().saveOptions();
    EXPECT_TRUE(file().contains("Elsewhere"));
}

TEST_F(clsOptionsTest, AFolderWithoutTheRightToWriteIsReported) {
    QFile::setPermissions(folder.path("options.xml"), QFile::Permissions(0x4444));
    QFile::setPermissions(folder.path(), QFile::Permissions(0x5555));
    {
        const support::OrdinaryUser user;
        options().saveOptions();
    }
    EXPECT_EQ(expectReport("clsOptions:saveOptions").number, QString::number(error::permissionDenied));
    QFile::setPermissions(folder.path(), QFile::Permissions(0x7700));
    QFile::setPermissions(folder.path("options.xml"), QFile::Permissions(0x6600));
}

TEST_F(clsOptionsTest, DroppingTheObjectSavesIt) {
    options().City("Last");
    basMain::Options.reset();
    EXPECT_TRUE(file().contains("<City>Last</City>"));
}

TEST_F(clsOptionsTest, TheVersionElementIsReadByNothingAndKept) {
    load(optionsXml().replace("<Version>1<", "<Version>9<"));
    options().saveOptions();
    EXPECT_TRUE(file().contains("<Version>9</Version>"));
}

class DBVersionTest : public clsOptionsTest {
protected:
    void SetUp() override {
        clsOptionsTest::SetUp();
        openDatabase();
        sql("DELETE FROM Options; INSERT INTO Options (opt_Version) VALUES (3);"
            "INSERT INTO Options (opt_Version) VALUES (4);");
        clearStatements();
    }
};

TEST_F(DBVersionTest, ReadsTheFirstRow) {
    EXPECT_EQ(options().DBVersion(), "3");
    EXPECT_EQ(statements, QStringList("SELECT [opt_Version] FROM [Options]"));
}

TEST_F(DBVersionTest, WritesTheBareValueToEveryRow) {
    options().DBVersion("12");
    EXPECT_EQ(statements, QStringList("UPDATE [Options] SET [opt_Version] = 12"));
    EXPECT_EQ(sqlText("SELECT CAST(opt_Version AS INTEGER) FROM Options").toStdString(), "12\n12");
}

TEST_F(DBVersionTest, AVersionThatIsNoNumberBreaksTheStatement) {
    options().DBVersion("1.2.3");
    EXPECT_EQ(expectReport("clsOptions:DBVersion").statement, "UPDATE [Options] SET [opt_Version] = 1.2.3");
    EXPECT_EQ(sqlText("SELECT CAST(opt_Version AS INTEGER) FROM Options").toStdString(), "3\n4");
}

TEST_F(DBVersionTest, IsEmptyWithoutARow) {
    sql("DELETE FROM Options");
    EXPECT_EQ(options().DBVersion(), "");
    expectReport("clsOptions:DBVersion");
}

}  // namespace
