// F1 and the entry of the Help menu: the manual at the place of what is looked at.
#include "core/Help.h"
#include "ScreenTest.h"

#include "Child.h"
#include "Waiting.h"
#include "core/HelpPlaces.h"
#include "manual/ManualView.h"
#include "platform/widgets/OwnerWindow.h"

#include <QApplication>
#include <QDialog>
#include <QDirIterator>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using support::child;

class HelpTest : public ScreenTest {
protected:
    void SetUp() override {
        ScreenTest::SetUp();
        load();
        ASSERT_TRUE(support::becomesActive(window.get()));
    }
    void seed() override { seedFormulas(); }
    static ManualWindow* manual() {
        ManualWindow* found = nullptr;
        for (QWidget* each : QApplication::topLevelWidgets()) {
            auto* one = qobject_cast<ManualWindow*>(each);
            EXPECT_FALSE(one && found) << "there is one window of the manual at most";
            found = one ? one : found;
        }
        return found;
    }
    /// Page and section on show.
    static std::string place() {
        if (!manual() || !manual()->isVisible())
            return "none";
        const auto& view = *child<ManualView>(*manual(), "txtManual");
        const auto section = static_cast<std::size_t>(view.sectionOnTop());
        return (view.page()->name + '#'_L1 + view.page()->sections()[section].anchor).toStdString();
    }
};

TEST_F(HelpTest, EachPlaceIsInTheManual) {
    const Manual pages(manualFolder(), u"English"_s);
    ASSERT_FALSE(pages.pages().empty());
    for (const HelpPlace& each : helpPlaces()) {
        const ManualPlace wanted = ManualPlace::of(QLatin1String(each.place));
        const ManualPage* page = pages.find(wanted.page);
        ASSERT_TRUE(page) << each.name;
        if (!wanted.anchor.isEmpty()) {
            EXPECT_GT(page->sectionOf(wanted.anchor), 0) << each.name;
        }
    }
}

TEST_F(HelpTest, EachWindowOfTheProgramHasAPlace) {
    static const QRegularExpression dialog(
        uR"(class (\w+)(?: final)? : public (?:QDialog|QMainWindow|(?:platform::)?ModalForm)\b)"_s);
    const QStringList without{u"frmMain"_s,     // the place is that of its screen
                              u"ModalForm"_s,   // a base of others
                              u"AskDialog"_s};  // the place is that of the window that it asks in
    QStringList named;
    for (const HelpPlace& each : helpPlaces())
        named << QString::fromLatin1(each.name);
    int windows = 0;
    QDirIterator files(QLatin1String(SORVANTO_SOURCE_DIR) + u"/src"_s, {u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        for (auto all = dialog.globalMatch(QString::fromUtf8(file.readAll())); all.hasNext(); ++windows) {
            const QString name = all.next().captured(1);
            EXPECT_TRUE(named.contains(name) || without.contains(name)) << qPrintable(name);
        }
    }
    EXPECT_GT(windows, 10);
}

TEST_F(HelpTest, F1OpensThePageOfTheScreen) {
    const std::pair<const char*, const char*> screens[] = {{"cmdFormulas", "README.md#formulas"},
                                                           {"cmdCurrent", "README.md#making-a-batch"},
                                                           {"cmdChemicals", "README.md#chemicals"},
                                                           {"cmdLogs", "README.md#the-log"},
                                                           {"cmdPatients", "README.md#patients"}};
    for (const auto& [button, wanted] : screens) {
        click(QLatin1String(button));
        window->activateWindow();
        ASSERT_TRUE(support::becomesActive(window.get()));
        QTest::keyClick(window.get(), Qt::Key_F1);
        EXPECT_EQ(place(), wanted);
        manual()->close();
        EXPECT_EQ(place(), "none");
    }
}

TEST_F(HelpTest, BesideTheScreenItIsThatOfThePart) {
    auto* search = child<QLineEdit>(*window, "searchBox");
    search->setFocus();
    QTest::keyClick(search, Qt::Key_F1);
    EXPECT_EQ(place(), "README.md#finding-a-record");
}

TEST_F(HelpTest, TheMenuOpensItAndThereIsOnlyOne) {
    click(u"mnuManual"_s);
    ManualWindow* first = manual();
    ASSERT_TRUE(first);
    click(u"mnuManual"_s);
    EXPECT_EQ(manual(), first);
    EXPECT_FALSE(first->isModal());
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(HelpTest, WhatIsAskedWhileItIsReadBelongsToTheWindowBefore) {
    QTest::keyClick(window.get(), Qt::Key_F1);
    ASSERT_TRUE(support::becomesActive(manual()));
    EXPECT_EQ(platform::ownerWindow(), window.get());
}

TEST_F(HelpTest, FromADialogItIsThatOfTheDialogAndCanBeRead) {
    QDialog dialog(window.get());
    dialog.setObjectName(u"frmSelPrint"_s);
    auto* box = new QLineEdit(&dialog);
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(support::becomesActive(&dialog));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_F1);
    EXPECT_EQ(place(), "labels.md#labels");
    EXPECT_TRUE(dialog.isVisible());
    ASSERT_TRUE(support::waitFor([] {
        manual()->activateWindow();
        return QApplication::activeWindow() == manual();
    }));
    QTest::keyClick(manual()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(place(), "none");
    EXPECT_TRUE(dialog.isVisible()) << "only the manual was closed";
}

TEST_F(HelpTest, AQuestionHasThePlaceOfItsWindow) {
    QDialog dialog(window.get());
    dialog.setObjectName(u"frmReportDate"_s);
    dialog.setModal(true);
    dialog.show();
    QDialog question(&dialog);
    question.setModal(true);
    question.show();
    QTest::keyClick(&question, Qt::Key_F1);
    EXPECT_EQ(place(), "months-end.md#the-months-end");
}

TEST_F(HelpTest, APopupIsClosedFirst) {
    QMenu menu(window.get());
    menu.addAction(u"entry"_s);
    menu.popup({10, 10});
    QTest::keyClick(&menu, Qt::Key_F1);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(place(), "README.md#formulas");
}

TEST_F(HelpTest, OtherKeysOpenNothing) {
    QTest::keyClick(window.get(), Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClick(window.get(), Qt::Key_F1, Qt::ControlModifier);
    EXPECT_EQ(place(), "none");
}

TEST_F(HelpTest, ItGoesWithTheMainWindow) {
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);  // open for typing from the start
    QTest::keyClick(window.get(), Qt::Key_F1);
    window->close();
    EXPECT_EQ(place(), "none");
}

}  // namespace
