// A whole batch without a mouse, in languages whose keys and captions differ: the formula found, made, mixed, signed, its
// labels in a PDF file.
#include "DeskTest.h"

#include "Settle.h"
#include "Waiting.h"
#include "mixer/ctlSorvanto.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "screens/BrowsingScreen.h"

#include <QApplication>
#include <QFile>
#include <QMenu>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

struct Language {
    int number;
    const char* name;
};

class KeyboardBatchTest : public DeskTest, public testing::WithParamInterface<Language> {
protected:
    void SetUp() override {
        QFile delivered(QLatin1String(SORVANTO_SOURCE_DIR) + u"/languages/%1"_s.arg(fileName()));
        ASSERT_TRUE(delivered.open(QIODevice::ReadOnly));
        folder.write(fileName(), delivered.readAll());
        DeskTest::SetUp();
    }
    static QString fileName() { return QLatin1String(GetParam().name) + u"Translation.xml"_s; }
    QByteArray optionsXml() const override {
        const QByteArray number = QByteArray::number(GetParam().number);
        return DeskTest::optionsXml().replace("<Language>0<", "<Language>" + number + "<");
    }
    /// Down in the menu on show, until that entry is lit; its letter is another one in each language.
    void goToEntry(const QString& entry) const {
        const auto lit = [] {
            const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu && menu->activeAction() ? menu->activeAction()->objectName() : QString();
        };
        for (int step = 0; step < 12 && lit() != entry; ++step)
            press(Qt::Key_Down);
        EXPECT_EQ(str(lit()), str(entry));
    }
    /// To whatever has the keyboard now.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(&receiver(), key, modifiers);
        support::settle();
    }
    void type(const QString& text) const {
        for (const QChar sign : text)
            QTest::sendKeyEvent(QTest::Click, &receiver(), Qt::Key(sign.toUpper().unicode()), QString(sign),
                                Qt::NoModifier);
        support::settle();
    }
    static QString focus() {
        const QWidget* owner = QApplication::focusWidget();
        return owner ? owner->objectName() : QString();
    }
    /// Tab, or F6, until that control has the keyboard.
    void goTo(const QString& control, Qt::Key key) const {
        for (int step = 0; step < 30 && focus() != control; ++step)
            press(key);
        EXPECT_EQ(str(focus()), str(control));
    }
    /// F6 leads to the panel, Tab to its buttons.
    void goToPanel(const QString& button) const {
        for (int step = 0; step < 12 && !window->mixer().isAncestorOf(QApplication::focusWidget()); ++step)
            press(Qt::Key_F6);
        goTo(button, Qt::Key_Tab);
    }
    /// As a desktop does when a window comes up or the one above it goes.
    static void activate(QWidget& shown) {
        EXPECT_TRUE(support::waitFor([&] {
            shown.activateWindow();
            return QApplication::activeWindow() == &shown;
        }));
    }
    static platform::PreviewWindow* preview() {
        for (QWidget* found : QApplication::topLevelWidgets()) {
            auto* shown = qobject_cast<platform::PreviewWindow*>(found);
            if (shown && shown->isVisible())
                return shown;
        }
        return nullptr;
    }
    /// What Qt itself would let the key go to. As a desktop does, the main window is active where no other is.
    QWidget& receiver() const {
        if (QWidget* popup = QApplication::activePopupWidget())
            return *popup;
        if (!QApplication::activeWindow()) {
            window->activateWindow();
            EXPECT_TRUE(support::becomesActive(window.get()));
        }
        QWidget* owner = QApplication::focusWidget();
        QWidget* active = QApplication::activeWindow();
        return owner ? *owner : active ? *active : *window;
    }
    QString newest(const char* column) const {
        return sqlText(u"SELECT %1 FROM Log ORDER BY LogID DESC LIMIT 1"_s.arg(column));
    }
};

TEST_P(KeyboardBatchTest, FromTheSearchToTheLabels) {
    window->activateWindow();
    ASSERT_TRUE(support::becomesActive(window.get()));
    press(Qt::Key_2, Qt::ControlModifier);
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(str(focus()), "searchBox");
    type(u"cool"_s);
    press(Qt::Key_Return);
    ASSERT_EQ(str(text(formulas, u"txtfrm_Name"_s)), "Cooling Gel");

    whileOpen(u"frmMake"_s, [this](QWidget& form) {
        EXPECT_TRUE(support::becomesActive(&form));
        support::settle();
        type(u"20"_s);
        press(Qt::Key_Return);
    });
    press(Qt::Key_M, Qt::ControlModifier);
    ASSERT_EQ(window->current(), currentFormula);
    ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerStart")->isEnabled(); }));

    goToPanel(u"mixerStart"_s);
    press(Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerStop")->isVisible(); }));
    EXPECT_FALSE(qobject_cast<QPushButton*>(QApplication::focusWidget()))
        << "a second Enter must not pause or stop: " << str(focus());

    whileOpen(u"frmInitials"_s, [this](QWidget& form) {
        EXPECT_TRUE(support::becomesActive(&form));
        support::settle();
        type(u"RK"_s);
        press(Qt::Key_Return);
        type(u"LM"_s);
        press(Qt::Key_Return);
    });
    line.run(1'200'000);
    ASSERT_TRUE(test::waitFor([&] { return logCount() == 4 && !modalOnShow(); }));
    EXPECT_EQ(str(newest("log_Name || ' ' || log_Quantity || ' ' || log_Initials || ' ' || log_Verified")),
              "Cooling Gel 20 RK LM");

    press(Qt::Key_4, Qt::ControlModifier);
    press(Qt::Key_F, Qt::ControlModifier);
    type(u"?"_s + newest("substr(log_Lot, 1, 8)"));
    press(Qt::Key_Return);
    whileOpen(u"frmSelPrint"_s, [this](QWidget& form) {
        EXPECT_TRUE(support::becomesActive(&form));
        support::settle();
        goTo(u"cmdPosition_1"_s, Qt::Key_Tab);
        press(Qt::Key_Return);
    });
    press(Qt::Key_P, Qt::ControlModifier);
    ASSERT_TRUE(QApplication::activePopupWidget());
    goToEntry(u"mnuLabel"_s);
    press(Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([] { return preview() && preview()->isComplete(); }));
    activate(*preview());
    whileOpen(u"savePdfDialog"_s, [this](QWidget& form) {
        EXPECT_TRUE(support::becomesActive(&form));
        support::settle();
        press(Qt::Key_A, Qt::ControlModifier);
        type(folder.path(u"labels.pdf"_s));
        press(Qt::Key_Return);
    });
    press(Qt::Key_S, Qt::ControlModifier);
    QFile labels(folder.path(u"labels.pdf"_s));
    EXPECT_TRUE(labels.open(QIODevice::ReadOnly) && labels.read(5) == "%PDF-");
    activate(*preview());
    press(Qt::Key_Escape);
    EXPECT_FALSE(preview());
    EXPECT_TRUE(shown.contains(u"frmSelPrint"_s)) << str(shown.join(u' '));
}

TEST_P(KeyboardBatchTest, AMixThatEndsLeavesTheKeyboardWhereItIs) {
    click(u"cmdLogs"_s);
    click(u"cmdEdit"_s);
    startMix();
    goToPanel(u"mixerPause"_s);
    control<platform::MemoBox>(logs, u"txtlog_Notes"_s).setText(u"typed"_s);
    endMix();
    ASSERT_TRUE(waits());
    EXPECT_FALSE(panelButton("mixerPause")->isVisible());
    EXPECT_NE(str(focus()), "mixerSign") << "the next key would begin the signing";
    EXPECT_FALSE(qobject_cast<QPushButton*>(QApplication::focusWidget())) << str(focus());
    sign();
    goTo(u"mixerSign"_s, Qt::Key_F6);
    press(Qt::Key_Return);
    ASSERT_TRUE(test::waitFor([&] { return logCount() == 4; }));
}

INSTANTIATE_TEST_SUITE_P(Languages, KeyboardBatchTest,
                         testing::Values(Language{0, "English"}, Language{2, "German"},
                                         Language{4, "Russian"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
