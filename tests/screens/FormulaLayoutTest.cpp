// The formula screens and the two mixing dialogs at the size of a small screen, in English and German, light
// and dark: no caption is cut off. With SORVANTO_PICTURES naming a folder, pictures are kept there.
#include "FormulaScreenTest.h"

#include "mixing/frmInitials.h"
#include "mixing/frmMake.h"
#include "platform/widgets/Theme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class FormulaLayoutTest : public FormulaScreenTest, public ::testing::WithParamInterface<int> {
protected:
    void TearDown() override {
        FormulaScreenTest::TearDown();
        platform::applyTheme(*qApp, false);
    }
    QByteArray optionsXml() const override {
        return FormulaScreenTest::optionsXml().replace("<Language>0<",
                                                       german() ? "<Language>2<" : "<Language>0<");
    }
    static bool german() { return GetParam() & 1; }
    static bool dark() { return GetParam() & 2; }

    void start() {
        platform::applyTheme(*qApp, dark());
        if (german()) {
            QFile delivered(QString(SORVANTO_SOURCE_DIR) + "/languages/GermanTranslation.xml");
            ASSERT_TRUE(delivered.open(QIODevice::ReadOnly));
            folder.write("GermanTranslation.xml", delivered.readAll());
        }
        load();
        search("Cooling Gel");
    }
    static void checkHeadings(const QHeaderView& header, const QString& name) {
        for (int i = 0; i < header.count(); ++i) {
            EXPECT_TRUE(header.isSectionHidden(i) || header.sectionSize(i) >= header.sectionSizeHint(i))
                << str(name) << ": heading " << str(header.model()->headerData(i, Qt::Horizontal).toString());
        }
    }
    /// Looks at all of the part, and keeps a picture of its whole window.
    void check(QWidget& part, const QString& name) const {
        QCoreApplication::processEvents();
        for (QWidget* found : part.findChildren<QWidget*>()) {
            const auto* label = qobject_cast<QLabel*>(found);
            const bool worded = (label && !label->wordWrap() && !label->text().isEmpty()) ||
                                qobject_cast<QAbstractButton*>(found);
            if (worded && found->isVisible() && !found->objectName().isEmpty()) {
                EXPECT_GE(found->width(), found->minimumSizeHint().width())
                    << str(name) << ": " << str(found->objectName());
            }
            if (const auto* header = qobject_cast<QHeaderView*>(found); header && found->isVisible())
                checkHeadings(*header, name);
        }
        const QString pictures = qEnvironmentVariable("SORVANTO_PICTURES");
        if (!pictures.isEmpty())
            part.window()->grab().save(QDir(pictures).filePath(name + (german() ? "-de" : "-en") +
                                                               (dark() ? "-dark" : "") + ".png"));
    }
};

TEST_P(FormulaLayoutTest, FormulaScreen) {
    start();
    const char* const names[] = {"general", "ingredients", "mix"};
    for (int tab = 0; tab < 3; ++tab) {
        tabs().setCurrentIndex(tab);
        check(formula(), u"formula-%1-locked"_s.arg(names[tab]));
    }
    click("cmdEdit");
    for (int tab = 0; tab < 3; ++tab) {
        tabs().setCurrentIndex(tab);
        check(formula(), u"formula-%1"_s.arg(names[tab]));
    }
}

TEST_P(FormulaLayoutTest, CurrentFormulaScreen) {
    start();
    asker.expectModal("frmMake",
                      [](QWidget& question) { support::child<QPushButton>(question, "OKButton")->click(); });
    click("cmdMake");
    check(*window->screen(currentFormula), "current");
}

TEST_P(FormulaLayoutTest, Dialogs) {
    start();
    frmMake question;
    question.MakeQty(250);
    question.setFormula(platform::deref(clsFormula().openFormula(1, QString())));
    asker.expectModal("frmMake", [this](QWidget& form) {
        check(form, "make");
        form.close();
    });
    question.showModal();
    for (const char* id : {"1", "0"}) {
        frmInitials signing(context);
        signing.setFormula(document(u"<Formula><ID>%1</ID><Type>9</Type><Size>3</Size><Make>25</Make>"
                                    u"<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/></Formula>"_s.arg(id)));
        signing.log_Lot("AB0012");
        signing.setResults(document("<Results Value=\"AB\"><Interuption Value=\"U\"/>"
                                    "<TotalMixingRevolutions Value=\"1760\"/></Results>"));
        asker.expectModal("frmInitials", [this, id](QWidget& form) {
            check(form, u"initials-"_s + id);
            form.close();
        });
        signing.showModal();
    }
}

INSTANTIATE_TEST_SUITE_P(LanguagesAndThemes, FormulaLayoutTest, ::testing::Range(0, 4), [](const auto& row) {
    return std::string(row.param & 1 ? "German" : "English") + (row.param & 2 ? "Dark" : "Light");
});

}  // namespace
