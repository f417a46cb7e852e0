// The translated texts of the command bar.
#include "MainWindowTest.h"

#include "config/clsLanguage.h"
#include "platform/xml/XmlDocument.h"

namespace {

using namespace core_test;

class ToolTextsTest : public MainWindowTest {
protected:
    QByteArray optionsXml() const override {
        return MainWindowTest::optionsXml().replace("<Language>0<", "<Language>2<");
    }
};

/// The English texts of a language file in the order of the file.
QStringList keys(const QString& path) {
    const auto document = platform::XmlDocument::create();
    EXPECT_TRUE(document->load(platform::platformPath(path)));
    QStringList found;
    for (const auto& entry : document->selectNodes("//Translate"))
        found << entry.attribute("English");
    return found;
}

TEST_F(ToolTextsTest, AFreshLanguageFileGainsThemInTheirOrder) {
    createDatabase();
    load();
    EXPECT_EQ(keys(basMain::Language->translationPath()), (QStringList{"Sorvanto Control Panel",
                                                                       "Current Formula",
                                                                       "Formulas",
                                                                       "Chemicals",
                                                                       "Logs",
                                                                       "Patients",
                                                                       "First Record",
                                                                       "Previous Record",
                                                                       "Next Record",
                                                                       "Last Record",
                                                                       "Edit Record",
                                                                       "Save Record",
                                                                       "Copy Record",
                                                                       "Cancel Edit",
                                                                       "New Record",
                                                                       "Delete Record",
                                                                       "Find",
                                                                       "Print",
                                                                       "Export",
                                                                       "&Label",
                                                                       "&Worksheet",
                                                                       "&Formula Log",
                                                                       "&Report",
                                                                       "&Jar Report",
                                                                       "C&urrent Formula",
                                                                       "&Formulas",
                                                                       "&Chemicals",
                                                                       "&Logs",
                                                                       "&Patients",
                                                                       "&Make Formula",
                                                                       "&Options",
                                                                       "&File",
                                                                       "&Print",
                                                                       "&Export",
                                                                       "E&xit",
                                                                       "&Help",
                                                                       "&Update Sorvanto",
                                                                       "&About",
                                                                       "&Activities",
                                                                       "&Health",
                                                                       "Find by name",
                                                                       "&Where Did It Go",
                                                                       "Where Used",
                                                                       "&Manual",
                                                                       "&History",
                                                                       "New Lot",
                                                                       "&Recalculate",
                                                                       "Import prices"}));
}

TEST_F(ToolTextsTest, AreLookedUpEachByItself) {
    createDatabase();
    folder.write("GermanTranslation.xml",
                 "<Translations Language=\"German\">"
                 "<Translate English=\"Sorvanto Control Panel\" Translated=\"Sorvanto Bedienung\"/>"
                 "<Translate English=\"Logs\" Translated=\"Protokolle\"/>"
                 "<Translate English=\"&amp;Logs\" Translated=\"&amp;Protokoll\"/>"
                 "<Translate English=\"&amp;Export\" Translated=\"E&amp;xport\"/></Translations>");
    load();
    EXPECT_EQ(tool("FormBar", "cmdLogs").toolTip(), "Protokolle");
    EXPECT_EQ(tool("mnuForms", "mnuLogs").caption(), "&Protokoll");
    EXPECT_EQ(tool("mnuFile", "mnuExport").caption(), "E&xport");
    EXPECT_EQ(window->bar().band("mnuExport").caption(), "E&xport");
    EXPECT_EQ(tool("MainBar", "cmdExport").toolTip(), "Export");
    click("FormBar", "cmdLogs");
    EXPECT_EQ(window->windowTitle(), "Sorvanto Bedienung: Protokolle  :  txtlog_Name of 2");
    // What the host tools say stays English.
    EXPECT_EQ(tool("Logs", "frmLog").description(), "Logs");
    EXPECT_EQ(tool("Logs", "frmLog").toolTip(), "Logs");
    EXPECT_EQ(tool("Sorvanto", "frmSorvanto").description(), "Sorvanto Control Panel");
    EXPECT_EQ(window->bar().band("Sorvanto").caption(), "Sorvanto Control Panel");
}

TEST_F(ToolTextsTest, StandWhereTheyAreShown) {
    createDatabase();
    load();
    EXPECT_EQ(tool("MainBar", "cmdMake").toolTip(), "&Make Formula");
    EXPECT_EQ(tool("MainBar", "cmdOptions").toolTip(), "&Options");
    EXPECT_EQ(tool("MainBar", "cmdSearch").toolTip(), "Find");
    const auto* box = window->findChild<QLineEdit*>("searchBox");
    EXPECT_EQ(box->accessibleName(), "Find by name");
    EXPECT_EQ(box->placeholderText(), "Find by name");
    EXPECT_EQ(box->toolTip(),
              u"Find by name (%1)"_s.arg(QKeySequence(u"Ctrl+F"_s).toString(QKeySequence::NativeText)));
    EXPECT_EQ(tool("MainBar", "cmdFirst").caption(), "First");
    EXPECT_EQ(tool("FormBar", "cmdLogs").toolTip(), "Logs");
    EXPECT_EQ(tool("FormBar", "cmdLogs").caption(), "");
    EXPECT_EQ(tool("mnuForms", "mnuCurrentFormula").caption(), "C&urrent Formula");
    EXPECT_EQ(tool("mnuFile", "mnuExit").caption(), "E&xit");
    EXPECT_EQ(window->bar().band("mnuHelp").caption(), "&Help");
    EXPECT_EQ(window->bar().band("mnuMain").caption(), "Main Menu");
}

}  // namespace
