// The about box.
#include "core/frmAbout.h"
#include "Child.h"
#include "TestProgram.h"
#include "shared/basMain.h"

#include <QLabel>
#include <QTest>

namespace {

using namespace sorvanto;
using support::child;

class frmAboutTest : public support::TestProgram {
protected:
    QString label(const QString& name) { return child<QLabel>(about, name)->text(); }
    frmAbout about{context};
};

TEST_F(frmAboutTest, ShowsBothVersions) {
    openDatabase();
    about.Form_Load();
    EXPECT_EQ(statements, QStringList{"SELECT opt_Version FROM Options"});
    EXPECT_EQ(about.windowTitle(), "AboutSorvanto Control Panel");
    EXPECT_EQ(label("lblVersion"), "Version:1.0.0");
    EXPECT_EQ(label("lblDBVersion"), "DB Version:1");
}

TEST_F(frmAboutTest, TheLanguageMayGiveTheBlankBack) {
    folder.write("EnglishTranslation.xml",
                 "<Translations Language=\"English\"><Translate English=\"About\" Translated=\"About \"/>"
                 "</Translations>");
    startConfiguration();
    openDatabase();
    about.Form_Load();
    EXPECT_EQ(about.windowTitle(), "About Sorvanto Control Panel");
}

TEST_F(frmAboutTest, WithoutADatabaseTheStoredCaptionsStand) {
    asker.expectMsgBox("Database file not found. Please set in options",
                       {platform::Buttons::Ok, platform::Icon::Information}, "DATABASE NOT FOUND");
    about.Form_Load();
    expectReport("frmAbout:Form_Load");
    EXPECT_EQ(label("lblVersion"), "Version:");
    EXPECT_EQ(label("lblDBVersion"), "DB Version:");
}

TEST_F(frmAboutTest, AClickAnywhereClosesIt) {
    openDatabase();
    about.Form_Load();
    for (QWidget* target :
         {static_cast<QWidget*>(&about), static_cast<QWidget*>(child<QLabel>(about, "lblVersion")),
          static_cast<QWidget*>(child<QLabel>(about, "picLogo"))}) {
        about.show();
        QTest::mouseClick(target, Qt::LeftButton);
        EXPECT_FALSE(about.isVisible()) << qPrintable(target->objectName());
    }
}

TEST_F(frmAboutTest, SoDoTheKeysThatEndADialog) {
    openDatabase();
    about.Form_Load();
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        about.show();
        QTest::keyClick(&about, key);
        EXPECT_FALSE(about.isVisible());
    }
}

}  // namespace
