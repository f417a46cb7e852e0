// The question of a first start.
#include "config/frmWizard.h"

#include "support/Child.h"
#include "support/Golden.h"
#include "support/TestProgram.h"

#include <QAbstractButton>
#include <QTest>

using namespace Qt::StringLiterals;

using sorvanto::frmWizard;
using support::child;

namespace {

const QStringList captions{"English", "Espanol",    "Deutsch",  "Francais",
                           "Ruski",   "Portuguese", "Italiano", "Polish"};

class frmWizardTest : public support::TestProgram {};

TEST_F(frmWizardTest, OffersTheEightLanguages) {
    frmWizard wizard;
    EXPECT_EQ(wizard.windowTitle(), "Sorvanto Language");
    EXPECT_EQ(wizard.findChildren<QAbstractButton*>().size(), captions.size());
    for (int index = 0; index < captions.size(); ++index)
        EXPECT_EQ(child<QAbstractButton>(wizard, u"optLanguage_%1"_s.arg(index))->text(), captions[index]);
}

TEST_F(frmWizardTest, TheHelpSaysWhichFrenchAndWhichPortuguese) {
    frmWizard wizard;
    const auto help = [&](int index) {
        return child<QAbstractButton>(wizard, u"optLanguage_%1"_s.arg(index))->toolTip();
    };
    EXPECT_EQ(help(3), u"Français (France)"_s);
    EXPECT_EQ(help(5), u"Português (Portugal)"_s);
    EXPECT_EQ(help(7), u"Français (Suisse)"_s);
    for (int index = 0; index < captions.size(); ++index)
        EXPECT_FALSE(help(index).isEmpty()) << index;
}

TEST_F(frmWizardTest, TheFirstClickIsTheAnswer) {
    for (int index = 0; index < captions.size(); ++index) {
        frmWizard wizard;
        wizard.show();
        QTest::mouseClick(child<QAbstractButton>(wizard, u"optLanguage_%1"_s.arg(index)), Qt::LeftButton);
        EXPECT_EQ(wizard.Language(), index);
        EXPECT_FALSE(wizard.isVisible());
    }
}

TEST_F(frmWizardTest, AnswersByTheKeyboard) {
    frmWizard wizard;
    wizard.show();
    QTest::keyClick(child<QAbstractButton>(wizard, "optLanguage_4"), Qt::Key_Space);
    EXPECT_EQ(wizard.Language(), 4);
    EXPECT_FALSE(wizard.isVisible());
}

TEST_F(frmWizardTest, ClosingItMeansEnglish) {
    frmWizard wizard;
    EXPECT_EQ(wizard.Language(), 0);
    wizard.show();
    wizard.close();
    EXPECT_EQ(wizard.Language(), 0);
    wizard.show();
    QTest::keyClick(&wizard, Qt::Key_Escape);
    EXPECT_EQ(wizard.Language(), 0);
    EXPECT_FALSE(wizard.isVisible());
}

TEST_F(frmWizardTest, TheNumberCanBeSet) {
    frmWizard wizard;
    wizard.Language(5);
    EXPECT_EQ(wizard.Language(), 5);
}

TEST_F(frmWizardTest, NothingIsTranslated) {
    folder.write("GermanTranslation.xml", "<Translations Language=\"German\"><Translate English=\"Polish\" "
                                          "Translated=\"Polnisch\"/></Translations>");
    startConfiguration(2);
    const QByteArray before = folder.read("GermanTranslation.xml");
    const frmWizard wizard;
    EXPECT_EQ(child<QAbstractButton>(wizard, "optLanguage_7")->text(), "Polish");
    EXPECT_EQ(folder.read("GermanTranslation.xml"), before);
}

}  // namespace
