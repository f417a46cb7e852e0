// The whole look in one window, light and dark. Pictures go to the folder in SORVANTO_PICTURES, if set.
#include "Gallery.h"
#include "SampleRows.h"
#include "Settle.h"
#include "Waiting.h"
#include "WarningTrap.h"
#include "platform/widgets/AskDialog.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDir>
#include <QMenu>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

using namespace platform;

void keepPicture(QWidget& widget, const QString& name) {
    const QString folder = qEnvironmentVariable("SORVANTO_PICTURES");
    support::settle();
    if (!folder.isEmpty())
        widget.grab().save(QDir(folder).filePath(name + ".png"));
}

struct GalleryWindow {
    explicit GalleryWindow(bool locked, bool german = false) {
        support::buildSampleBar(bar);
        window.resize(1366, 738);
        bar.attach(window, "Panel");
        window.statusBar()->addWidget(new QLabel("sorvanto.mdb"));
        window.statusBar()->setSizeGripEnabled(false);
        screen = support::sampleScreen(locked, german, rows, &window);
        bar.band("Formulas").tool("frmFormula").setForm(screen);
        bar.band("Chemicals").setVisible(false);
        controls = support::sampleControls(&window);
        bar.band("Chemicals").tool("frmChemical").setForm(controls);
        bar.band("Panel").tool("frmPanel").setForm(support::samplePanel(&window));
        bar.band("FormBar").tool("cmdFormulas").setChecked(true);
        for (const char* name : {"cmdSave", "cmdCancel"})
            bar.band("MainBar").tool(name).setEnabled(!locked);
        window.show();
        EXPECT_TRUE(support::becomesExposed(&window));
    }

    support::SampleRows rows;
    CommandBar bar;
    QMainWindow window;
    QWidget* screen;
    QWidget* controls;
};

class Look : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { applyTheme(*qApp, GetParam()); }
    QString named(const QString& name) const { return name + (GetParam() ? "-dark" : "-light"); }
    support::WarningTrap trap;
};

TEST_P(Look, ScreenLockedAndInEditing) {
    for (const bool locked : {true, false}) {
        GalleryWindow shown(locked);
        const QString state = locked ? "locked" : "edit";
        keepPicture(shown.window, named("general-" + state));
        shown.screen->findChild<QTabWidget*>("tabs")->setCurrentIndex(1);
        keepPicture(shown.window, named("ingredients-" + state));
        const QImage image = shown.window.grab().toImage();
        const auto colorAt = [&image](int x, int y) {
            return image.pixelColor(QPoint(x, y) * image.devicePixelRatio());
        };
        EXPECT_EQ(colorAt(800, 650), theme().window);
        EXPECT_EQ(colorAt(1200, 600), theme().surface);
        EXPECT_EQ(colorAt(30, 600), theme().surface);
    }
}

TEST_P(Look, GermanWordsAreNotCutOff) {
    GalleryWindow shown(true, true);
    keepPicture(shown.window, named("german"));
    for (const QLabel* label : shown.screen->findChildren<QLabel*>())
        EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
}

TEST_P(Look, ControlsHintAndFocus) {
    GalleryWindow shown(false);
    shown.bar.band("Formulas").setVisible(false);
    shown.bar.band("Chemicals").setVisible(true);
    shown.window.activateWindow();
    auto* box = shown.controls->findChild<NumberBox*>("refused");
    box->setFocus();
    QTest::keyClicks(box, "1.234,5");
    keepPicture(shown.window, named("controls"));
    EXPECT_FALSE(box->acceptable());
}

TEST_P(Look, Windows) {
    AskDialog deletion("Delete this formula? It can't be brought back.", deletionStyle, "Delete Formula",
                       nullptr);
    deletion.show();
    keepPicture(deletion, named("question"));
    AskDialog input("Enter all or part of chemical name", "Search Chemical", "hydro", {}, nullptr);
    input.show();
    keepPicture(input, named("input"));
    LineNote said{"Diclofenac Sodium: 1,25 GMS"};
    AskDialog quantity("Gewünschte Menge für den Ausgangsstoff", "", "1.25",
                       {{}, [&](const QString&) { return said; }}, nullptr);
    quantity.show();
    keepPicture(quantity, named("quantity"));
    said = {"Diclofenac Sodium (GMS): Das ist keine einfache Zahl: Die Datenbank wird sie ausrechnen.", true};
    quantity.findChild<QLineEdit*>("line")->setText("5/2");
    EXPECT_TRUE(quantity.findChild<QLabel*>("note")->property("caution").toBool());
    keepPicture(quantity, named("quantity-doubtful"));
    QWidget form;
    form.resize(420, 120);
    auto* number = new NumberBox(&form);
    number->setGeometry(20, 20, 120, 32);
    number->setLocale(QLocale(QLocale::German));
    number->setFormats("#0.000", "#0.000");
    number->setValue(1.25);
    form.show();
    form.activateWindow();
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, "12,5");
    EXPECT_EQ(Hint::textOf(*number), "Please check: 1,25 before, 12,5 now.");
    EXPECT_TRUE(number->property("caution").toBool());
    EXPECT_TRUE(number->acceptable());
    EXPECT_EQ(number->toDouble(), 12.5);
    keepPicture(form, named("ten-times"));
    DateBox date;
    date.resize(160, 32);
    date.show();
    QTest::keyClick(date.findChild<QLineEdit*>(), Qt::Key_Down);
    auto* popup = date.findChild<QFrame*>("calendarPopup");
    ASSERT_NE(popup, nullptr);
    keepPicture(*popup, named("calendar"));
    QMenu menu;
    menu.addAction("&Worksheet");
    menu.addAction("&Report")->setEnabled(false);
    menu.addSeparator();
    menu.addAction("&Label")->setShortcut(QKeySequence("Ctrl+L"));
    menu.addMenu("&Print")->addAction("x");
    menu.popup(QPoint(0, 0));
    keepPicture(menu, named("menu"));
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, Look, testing::Bool());

}  // namespace
