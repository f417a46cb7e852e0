// The preview window driven by keys and clicks as a user would.
#include "Samples.h"
#include "Tools.h"
#include "support/Child.h"
#include "support/ScriptedAsker.h"
#include "support/Settle.h"
#include "support/TempProgramFolder.h"
#include "support/Waiting.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/report/PageView.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/PrinterQuestion.h"
#include "platform/report/ReportHooks.h"
#include "platform/report/ReportOutput.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPointer>
#include <QPrinter>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>
#include <future>
#include <gtest/gtest.h>

using namespace platform;
using namespace samples;
using support::child;

namespace {

class Preview : public testing::Test {
protected:
    void SetUp() override {
        applyTheme(*qobject_cast<QApplication*>(qApp), false);
        setReportFailureHandler([this] { failures << currentError().description(); });
        setPrinterNames([] { return QStringList{"Front desk"}; });
    }
    void TearDown() override {
        delete window;
        setReportFailureHandler({});
        setPrinterNames({});
    }

    PreviewWindow& open(std::unique_ptr<Report> report) {
        window = PreviewWindow::open(std::move(report));
        if (!window)
            throw std::runtime_error("no preview");
        return *window;
    }
    PreviewWindow& openList(int rows) {
        file.addMany(rows);
        return open(std::make_unique<StockList>(file.rows()));
    }
    void waitForEnd() {
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->isComplete(); }, 20'000));
    }
    PageView& view() { return *child<PageView>(*window, "pages"); }
    QString text(const QString& name) { return child<QLabel>(*window, name)->text(); }

    StockFile file;
    QPointer<PreviewWindow> window;
    QStringList failures;
};

}  // namespace

TEST_F(Preview, OpensWithTheFirstPageBeforeTheLastIsMade) {
    openList(4000);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->document().pages.size(), 1u);
    EXPECT_FALSE(window->isComplete());
    EXPECT_TRUE(child<QProgressBar>(*window, "progress")->isVisible());
    EXPECT_EQ(window->windowTitle(), "Stock List");
    waitForEnd();
    EXPECT_EQ(window->document().pages.size(), 92u);
    EXPECT_FALSE(child<QProgressBar>(*window, "progress")->isVisible());
    EXPECT_EQ(text("state"), "92 pages");
    EXPECT_EQ(text("pageCount"), "of 92");
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(Preview, StandsWhereTheReportSays) {
    file.addMany(1);
    auto report = std::make_unique<StockList>(file.rows());
    report->previewPlace = {0.9, 0.75, 50};
    open(std::move(report));
    const QRect screen = window->screen()->geometry();
    EXPECT_EQ(window->width(), screen.width() * 9 / 10);
    EXPECT_EQ(window->height(), screen.height() * 3 / 4);
    EXPECT_EQ(window->y(),
              screen.y() + static_cast<int>(50 * window->screen()->logicalDotsPerInchY() / 1440));
    EXPECT_EQ(PreviewPlace().width, 0.8);
    EXPECT_EQ(PreviewPlace().height, 0.95);
}

TEST_F(Preview, AFailureOnTheFirstPageShowsNoWindowAndIsToldOnce) {
    file.addMany(3);
    auto report = std::make_unique<StockList>(file.rows());
    report->onDetail = [](StockList&) { throw RuntimeError(error::divisionByZero, "Division by zero"); };
    EXPECT_EQ(PreviewWindow::open(std::move(report)), nullptr);
    EXPECT_EQ(failures, QStringList("Division by zero"));
}

TEST_F(Preview, AFailureLaterKeepsThePagesBeforeItAndIsToldOnce) {
    file.addMany(200);
    auto report = std::make_unique<StockList>(file.rows());
    report->onDetail = [](StockList& list) {
        if (list.control("name").text == "Item 150")
            throw RuntimeError(error::divisionByZero, "Division by zero");
    };
    open(std::move(report));
    ASSERT_TRUE(support::waitFor([&] { return !failures.isEmpty(); }));
    support::settle();
    EXPECT_EQ(failures, QStringList("Division by zero"));
    EXPECT_EQ(window->document().pages.size(), 3u);
    EXPECT_FALSE(window->isComplete());
    EXPECT_TRUE(child<QWidget>(*window, "notices")->isVisible());
    EXPECT_EQ(text("noticeLine"), "The report ended with an error after page 3.");
}

TEST_F(Preview, WithoutAHandlerAFailureIsABox) {
    setReportFailureHandler({});
    support::ScriptedAsker asker;
    asker.expectMsgBox("Division by zero", BoxStyle{Buttons::Ok, Icon::Critical});
    file.addMany(1);
    auto report = std::make_unique<StockList>(file.rows());
    report->onDetail = [](StockList&) { throw RuntimeError(error::divisionByZero, "Division by zero"); };
    EXPECT_EQ(PreviewWindow::open(std::move(report)), nullptr);
}

TEST_F(Preview, CancelStopsTheLayoutAndSaysSo) {
    openList(4000);
    QTest::mouseClick(child<QPushButton>(*window, "cancel"), Qt::LeftButton);
    EXPECT_EQ(window->document().pages.size(), 1u);
    EXPECT_EQ(text("noticeLine"), "The report was stopped after page 1: the rest is missing.");
    support::settle();
    EXPECT_EQ(window->document().pages.size(), 1u);
}

TEST_F(Preview, EscapeStopsFirstAndThenCloses) {
    openList(4000);
    QTest::keyClick(window, Qt::Key_Escape);
    ASSERT_FALSE(window.isNull());
    EXPECT_TRUE(window->isVisible());
    QTest::keyClick(window, Qt::Key_Escape);
    ASSERT_TRUE(support::waitFor([&] { return window.isNull(); })) << "a closed preview is gone";
}

TEST_F(Preview, ClosingWhileItRunsEndsTheReport) {
    file.addMany(4000);
    auto report = std::make_unique<StockList>(file.rows());
    const auto events = report->events;
    open(std::move(report));
    window->close();
    ASSERT_TRUE(support::waitFor([&] { return window.isNull(); }));
    EXPECT_EQ(events->last(), "terminate");
}

TEST_F(Preview, PagesAreTurnedByKeysButtonsAndNumber) {
    openList(400);
    waitForEnd();
    QTest::keyClick(&view(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(view().currentPage(), 1);
    QTest::keyClick(&view(), Qt::Key_End);
    EXPECT_EQ(view().currentPage(), 9);
    QTest::keyClick(&view(), Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(view().currentPage(), 8);
    QTest::keyClick(&view(), Qt::Key_Home);
    EXPECT_EQ(view().currentPage(), 0);
    QTest::mouseClick(child<QToolButton>(*window, "nextButton"), Qt::LeftButton);
    EXPECT_EQ(view().currentPage(), 1);
    QTest::mouseClick(child<QToolButton>(*window, "lastButton"), Qt::LeftButton);
    EXPECT_EQ(view().currentPage(), 9);
    EXPECT_FALSE(child<QAction>(*window, "next")->isEnabled());
    auto* box = child<QLineEdit>(*window, "pageBox");
    EXPECT_EQ(box->text(), "10");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "4");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(view().currentPage(), 3);
    QTest::keyClick(&view(), Qt::Key_Space);
    EXPECT_GE(view().currentPage(), 3);
}

TEST_F(Preview, ZoomsByKeysWheelBoxAndFit) {
    openList(10);
    waitForEnd();
    EXPECT_EQ(view().zoomMode(), ZoomMode::FitPage);
    const double whole = view().zoom();
    child<QAction>(*window, "zoomIn")->trigger();
    EXPECT_GT(view().zoom(), whole);
    EXPECT_EQ(view().zoomMode(), ZoomMode::Free);
    child<QAction>(*window, "zoomOut")->trigger();
    child<QAction>(*window, "zoomOut")->trigger();
    EXPECT_LT(view().zoom(), whole);
    const double before = view().zoom();
    QWheelEvent wheel(QPointF(50, 50), view().viewport()->mapToGlobal(QPointF(50, 50)), {}, QPoint(0, 120),
                      Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view().viewport(), &wheel);
    EXPECT_GT(view().zoom(), before);
    auto* box = child<QComboBox>(*window, "zoomBox");
    box->setEditText("200 %");
    QTest::keyClick(box->lineEdit(), Qt::Key_Return);
    EXPECT_DOUBLE_EQ(view().zoom(), 2.0);
    for (int i = 0; i < 30; ++i)
        child<QAction>(*window, "zoomIn")->trigger();
    EXPECT_DOUBLE_EQ(view().zoom(), 8.0);
    view().viewport()->grab();
    for (int i = 0; i < 30; ++i)
        child<QAction>(*window, "zoomOut")->trigger();
    EXPECT_DOUBLE_EQ(view().zoom(), 0.1);
    child<QAction>(*window, "fitWidth")->trigger();
    EXPECT_EQ(view().zoomMode(), ZoomMode::FitWidth);
    EXPECT_TRUE(child<QAction>(*window, "fitWidth")->isChecked());
    EXPECT_FALSE(child<QAction>(*window, "fitPage")->isChecked());
    child<QAction>(*window, "fitPage")->trigger();
    EXPECT_NEAR(view().zoom(), whole, 0.02);
    window->resize(window->width(), window->height() / 2);
    support::settle();
    EXPECT_LT(view().zoom(), whole * 0.7) << "a fitted page follows the window";
}

TEST_F(Preview, FindsTextsOnwardAndRoundAgain) {
    openList(400);
    waitForEnd();
    auto* box = child<QLineEdit>(*window, "searchBox");
    box->setFocus();
    QTest::keyClicks(box, "item 399");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(view().currentPage(), 9);
    EXPECT_FALSE(box->property("invalid").toBool());
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(view().currentPage(), 9) << "the only place is found again";
    box->setText("Item 1");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(box->property("invalid").toBool());
    box->setText("nothing of the kind");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(box->property("invalid").toBool());
    box->clear();
    EXPECT_FALSE(box->property("invalid").toBool());
}

TEST_F(Preview, WarnsOfATextThatWasCut) {
    open(onePage({field("name", 0, 0, 900, 270, "Name and strength, too long")}));
    waitForEnd();
    EXPECT_TRUE(child<QWidget>(*window, "notices")->isVisible());
    EXPECT_EQ(text("noticeLine"), "Page 1: too long for its place and cut: \"Name and strength, too long\"");
    EXPECT_FALSE(child<QPushButton>(*window, "noticeMore")->isVisible());
}

TEST_F(Preview, CountsWhatEveryLabelLacks) {
    open(std::make_unique<StripLabels>(0, 40, "Lot_7"));
    waitForEnd();
    EXPECT_EQ(text("noticeLine"), "Page 1: can not be written as a bar code: \"Lot_7\"  (40 times)");
}

TEST_F(Preview, ListsSeveralWarningsAndGoesToThem) {
    file.addMany(100);
    file.add("'A name that is far too long for its little field', 'Cream', 1, 1, NULL, 'L1'");
    file.add("'Another name that is far too long for its field', 'Cream', 1, 1, NULL, 'L1'");
    open(std::make_unique<StockList>(file.rows()));
    waitForEnd();
    QTest::mouseClick(child<QPushButton>(*window, "noticeMore"), Qt::LeftButton);
    auto* list = child<QListWidget>(*window, "noticeList");
    EXPECT_TRUE(list->isVisible());
    ASSERT_GE(list->count(), 2);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
    EXPECT_EQ(view().currentPage(), 2);
}

TEST_F(Preview, SavesAsPdfWhereTheUserSays) {
    openList(60);
    support::ScriptedAsker asker;
    const QTemporaryDir folder;
    const QString path = folder.filePath("mine");
    asker.expectModal("savePdfDialog", [&](QWidget& dialog) {
        child<QLineEdit>(dialog, "fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    child<QAction>(*window, "savePdf")->trigger();
    EXPECT_TRUE(window->isComplete()) << "the rest is laid out first";
    EXPECT_TRUE(tools::output("pdfinfo", {path + ".pdf"}).contains(QRegularExpression("Pages:\\s+2")));
    EXPECT_TRUE(child<QAction>(*window, "savePdf")->isEnabled());
}

TEST_F(Preview, LaysOutTheRestInRoundsThatDoNotGrow) {
    file.addMany(1000);
    auto report = std::make_unique<StockList>(file.rows());
    report->onDetail = [](StockList&) { QThread::usleep(500); };  // a page takes as long as a slice
    open(std::move(report));
    support::ScriptedAsker asker;
    const QTemporaryDir folder;
    asker.expectModal("savePdfDialog", [&](QWidget& dialog) {
        child<QLineEdit>(dialog, "fileNameEdit")->setText(folder.filePath("mine.pdf"));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    int before = view().pageCount(), most = 0;
    QTimer round;
    QObject::connect(&round, &QTimer::timeout, &round, [&] {
        most = std::max(most, view().pageCount() - before);
        before = view().pageCount();
    });
    round.start(0);
    child<QAction>(*window, "savePdf")->trigger();
    EXPECT_EQ(view().pageCount(), 23);
    EXPECT_GT(most, 0);
    EXPECT_LE(most, 3) << "pages between two looks at what the user does";
}

TEST_F(Preview, ProposesTheReportsOwnNameForAFile) {
    file.addMany(3);
    auto report = std::make_unique<StockList>(file.rows());
    report->fileName = u"Stock of the day 2026-11-21"_s;
    open(std::move(report));
    support::ScriptedAsker asker;
    asker.expectModal("savePdfDialog", [&](QWidget& dialog) {
        EXPECT_EQ(child<QLineEdit>(dialog, "fileNameEdit")->text(), "Stock of the day 2026-11-21.pdf");
        QMetaObject::invokeMethod(&dialog, "reject");
    });
    child<QAction>(*window, "savePdf")->trigger();
}

TEST_F(Preview, SaysWhatThereIsToKnowOfASavedFile) {
    openList(3);
    setSavedNote([](const QString& report) { return "Keep " + report + " to yourself."; });
    support::ScriptedAsker asker;
    const QTemporaryDir folder;
    const auto save = [&](const QString& path) {
        asker.expectModal("savePdfDialog", [&, path](QWidget& dialog) {
            child<QLineEdit>(dialog, "fileNameEdit")->setText(path);
            QMetaObject::invokeMethod(&dialog, path.isEmpty() ? "reject" : "accept");
        });
        child<QAction>(*window, "savePdf")->trigger();
    };
    const QString note = "Keep " + window->document().definition.name + " to yourself.";
    const auto says = [&] {
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text().contains(note))
                return true;
        }
        return false;
    };
    save(QString());
    EXPECT_FALSE(says()) << "nothing was saved";
    save(folder.filePath("mine.pdf"));
    EXPECT_TRUE(says());
    setSavedNote({});
}

TEST_F(Preview, OffersWhatCanBeDoneWithASavedFile) {
    openList(3);
    QStringList told, done;
    setSavedFileHandler([&](const QString& path) {
        told << path;
        return std::vector<SavedFileAction>{{"Open", [&done] { done << "open"; }},
                                            {"Show", [&done] { done << "show"; }}};
    });
    support::ScriptedAsker asker;
    const QTemporaryDir folder;
    const QString saved = folder.filePath("mine.pdf");
    const auto save = [&](const QString& path) {
        asker.expectModal("savePdfDialog", [&, path](QWidget& dialog) {
            child<QLineEdit>(dialog, "fileNameEdit")->setText(path);
            QMetaObject::invokeMethod(&dialog, path.isEmpty() ? "reject" : "accept");
        });
        child<QAction>(*window, "savePdf")->trigger();
    };
    save(saved);
    EXPECT_EQ(told, QStringList(saved));
    EXPECT_EQ(child<QPushButton>(*window, "savedAction0")->text(), "Open");
    child<QPushButton>(*window, "savedAction0")->click();
    child<QPushButton>(*window, "savedAction1")->click();
    EXPECT_EQ(done, (QStringList{"open", "show"}));
    save(QString());
    EXPECT_EQ(told.size(), 1);
    EXPECT_FALSE(window->findChild<QPushButton*>("savedAction0")) << "that of the earlier file is gone";
    setSavedFileHandler({});
}

TEST_F(Preview, SavesAsPdfAtAPathTypedByHand) {
    openList(1);
    support::ScriptedAsker asker;
    const QTemporaryDir place;
    ASSERT_TRUE(QDir(place.path()).mkpath("sheets/old"));
    asker.expectModal("savePdfDialog", [&](QWidget& dialog) {
        auto* line = child<QLineEdit>(dialog, "fileNameEdit");
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, place.path() + "/sheets/stock", Qt::NoModifier, 5);
        const auto* files = child<QFileSystemModel>(dialog, "qt_filesystem_model");
        ASSERT_TRUE(support::waitFor([&] {
            return files->rowCount(files->index(place.path() + "/sheets")) == 1;
        })) << "the folder is read meanwhile";
        QTest::keyClick(line, Qt::Key_Return);
        if (dialog.isVisible())
            dialog.close();
    });
    child<QAction>(*window, "savePdf")->trigger();
    EXPECT_TRUE(QFile::exists(place.filePath("sheets/stock.pdf")));
}

TEST_F(Preview, AFolderSelectedWhileAPathIsTypedDoesNotTakeItsPlace) {
    openList(1);
    support::ScriptedAsker asker;
    const QTemporaryDir place;
    ASSERT_TRUE(QDir(place.path()).mkpath("sheets/old"));
    asker.expectModal("savePdfDialog", [&](QWidget& dialog) {
        auto& files = dynamic_cast<QFileDialog&>(dialog);
        files.setDirectory(place.path());
        auto* list = child<QListView>(dialog, "listView");
        ASSERT_TRUE(support::waitFor([&] { return list->model()->rowCount(list->rootIndex()) == 1; }));
        auto* line = child<QLineEdit>(dialog, "fileNameEdit");
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, place.path() + "/sheets/stock.pdf");
        list->selectionModel()->select(list->model()->index(0, 0, list->rootIndex()),
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        QTest::mouseClick(files.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save),
                          Qt::LeftButton);
        if (dialog.isVisible())
            dialog.close();
    });
    child<QAction>(*window, "savePdf")->trigger();
    EXPECT_TRUE(QFile::exists(place.filePath("sheets/stock.pdf")));
}

TEST_F(Preview, AFileThatCannotBeWrittenIsTold) {
    openList(1);
    support::ScriptedAsker asker;
    const QTemporaryDir folder;
    asker.expectModal("savePdfDialog", [&](QWidget& dialog) {
        child<QLineEdit>(dialog, "fileNameEdit")->setText(folder.filePath("report.pdf"));
        QMetaObject::invokeMethod(&dialog, "accept");
        QFile::remove(folder.path());
        QDir(folder.path()).removeRecursively();
    });
    child<QAction>(*window, "savePdf")->trigger();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].contains("report.pdf"));
    EXPECT_TRUE(child<QAction>(*window, "savePdf")->isEnabled());
    // It is said in the preview too, which may hide the window that reports, until the next output.
    EXPECT_TRUE(child<QLabel>(*window, "noticeLine")->isVisibleTo(window));
    EXPECT_TRUE(child<QLabel>(*window, "noticeLine")->text().contains("report.pdf"));
    asker.expectModal("savePdfDialog", [](QWidget& dialog) { QMetaObject::invokeMethod(&dialog, "reject"); });
    child<QAction>(*window, "savePdf")->trigger();
    EXPECT_FALSE(child<QLabel>(*window, "noticeLine")->isVisibleTo(window));
}

TEST_F(Preview, WithoutAPrinterAPdfIsOffered) {
    setPrinterNames([] { return QStringList(); });
    openList(1);
    support::ScriptedAsker asker;
    asker.expectMsgBox("There is no printer on this computer. Save the report as PDF instead?",
                       BoxStyle{Buttons::YesNo, Icon::Information}, Answer::No);
    child<QAction>(*window, "print")->trigger();
    asker.verify();
    const QTemporaryDir folder;
    asker.expectMsgBox("There is no printer on this computer. Save the report as PDF instead?",
                       BoxStyle{Buttons::YesNo, Icon::Information}, Answer::Yes);
    asker.expectModal("savePdfDialog", [&](QWidget& dialog) {
        child<QLineEdit>(dialog, "fileNameEdit")->setText(folder.filePath("report.pdf"));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    child<QAction>(*window, "print")->trigger();
    EXPECT_TRUE(QFile::exists(folder.filePath("report.pdf")));
}

TEST_F(Preview, PrintersThatDoNotAnswerAreWaitedForUntilTheUserHasEnough) {
    std::promise<void> answer;
    setPrinterNames(
        [hangs = answer.get_future().share()] {
            hangs.wait();
            return QStringList{"Front desk"};
        },
        Asked::InThread);
    openList(1);
    support::ScriptedAsker asker;
    asker.expectMsgBox("The printers do not answer. Save the report as PDF instead?",
                       BoxStyle{Buttons::YesNo, Icon::Information}, Answer::No);
    QTimer look;
    look.callOnTimeout([] {
        for (QWidget* one : QApplication::topLevelWidgets())
            if (auto* waiting = qobject_cast<QProgressDialog*>(one))
                waiting->cancel();
    });
    look.start(10);
    child<QAction>(*window, "print")->trigger();
    asker.verify();
    answer.set_value();
    EXPECT_TRUE(PrinterQuestion().answered(20000));
}

TEST_F(Preview, AnUnknownPrinterIsToldAndNothingIsSentElsewhere) {
    file.addMany(1);
    auto report = std::make_unique<StockList>(file.rows());
    report->printerName = "Back room";
    open(std::move(report));
    support::ScriptedAsker asker;
    asker.expectMsgBox("The printer \"Back room\" is not on this computer. Nothing was printed. "
                       "Choose a printer in the next window.",
                       BoxStyle{Buttons::Ok, Icon::Exclamation});
    asker.expectModal("printDialog", [](QWidget& dialog) { QMetaObject::invokeMethod(&dialog, "reject"); });
    child<QAction>(*window, "print")->trigger();
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(Preview, APrinterThatRefusesItsNameIsTold) {
    file.addMany(1);
    auto report = std::make_unique<StockList>(file.rows());
    report->printerName = "Front desk";  // in our list, but not in the system's
    open(std::move(report));
    support::ScriptedAsker asker;
    asker.expectMsgBox("The printer \"Front desk\" can not be used. Nothing was printed.",
                       BoxStyle{Buttons::Ok, Icon::Exclamation});
    child<QAction>(*window, "print")->trigger();
}

TEST_F(Preview, NoPrinterNamedGoesStraightToTheDialog) {
    for (const char* name : {"", "0"}) {
        file.addMany(1);
        auto report = std::make_unique<StockList>(file.rows());
        report->printerName = name;
        open(std::move(report));
        support::ScriptedAsker asker;
        asker.expectModal("printDialog",
                          [](QWidget& dialog) { QMetaObject::invokeMethod(&dialog, "reject"); });
        child<QAction>(*window, "print")->trigger();
        delete window;
    }
}

TEST_F(Preview, PrintsWhatTheDialogSays) {
    openList(60);
    support::ScriptedAsker asker;
    const QTemporaryDir folder;
    const QString path = folder.filePath("printed.pdf");
    asker.expectModal("printDialog", [&](QWidget& dialog) {
        child<QLineEdit>(dialog, "filename")->setText(path);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    child<QAction>(*window, "print")->trigger();
    EXPECT_TRUE(failures.isEmpty());
    const auto words = tools::words(path);
    EXPECT_NEAR(tools::wordOf(words, "Stock").left, 810 / 20.0, 0.1) << "no margins of the printer's own";
    EXPECT_EQ(tools::wordOf(words, "2", 2).text, "2");
}

TEST_F(Preview, OnlyLabelsOfferAnOffset) {
    openList(1);
    EXPECT_EQ(window->findChild<QAction*>("offset"), nullptr);
}

TEST_F(Preview, AnOffsetIsKeptForThePrinter) {
    support::TempProgramFolder folder;
    open(std::make_unique<StripLabels>(0, 3, "L-1"));
    support::ScriptedAsker asker;
    asker.expectModal("labelOffset", [](QWidget& dialog) {
        EXPECT_EQ(child<QComboBox>(dialog, "printer")->currentText(), "Front desk");
        child<QDoubleSpinBox>(dialog, "right")->setValue(0.05);
        child<QDoubleSpinBox>(dialog, "down")->setValue(-0.1);
        QTest::mouseClick(child<QPushButton>(dialog, "ok"), Qt::LeftButton);
    });
    child<QAction>(*window, "offset")->trigger();
    EXPECT_EQ(printerOffset("Front desk"), QPoint(72, -144));
    asker.expectModal("labelOffset", [](QWidget& dialog) {
        EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(dialog, "right")->value(), 0.05);
        QTest::mouseClick(child<QPushButton>(dialog, "cancel"), Qt::LeftButton);
    });
    child<QAction>(*window, "offset")->trigger();
    EXPECT_EQ(printerOffset("Front desk"), QPoint(72, -144));
}

TEST_F(Preview, AnOffsetIsInMillimetresWhereTheSystemIsMetric) {
    setSystemLocale(QLocale("de_DE"));
    support::TempProgramFolder folder;
    open(std::make_unique<StripLabels>(0, 3, "L-1"));
    support::ScriptedAsker asker;
    asker.expectModal("labelOffset", [](QWidget& dialog) {
        auto* right = child<QDoubleSpinBox>(dialog, "right");
        EXPECT_EQ(right->suffix(), QString::fromUtf8("\u00a0mm"));
        EXPECT_DOUBLE_EQ(right->maximum(), 12.7);
        right->setValue(2.54);
        EXPECT_EQ(right->text(), QString::fromUtf8("2,54\u00a0mm"));
        QTest::mouseClick(child<QPushButton>(dialog, "ok"), Qt::LeftButton);
    });
    child<QAction>(*window, "offset")->trigger();
    setSystemLocale(std::nullopt);
    EXPECT_EQ(printerOffset("Front desk"), QPoint(144, 0));
}

TEST_F(Preview, TheUnitOfAnOffsetIsWrittenInTheUsersLanguage) {
    setSystemLocale(QLocale("ru_RU"));
    setTextTranslator([](const QString& english) { return english == "mm"_L1 ? u"мм"_s : english; });
    support::TempProgramFolder folder;
    open(std::make_unique<StripLabels>(0, 3, "L-1"));
    support::ScriptedAsker asker;
    asker.expectModal("labelOffset", [](QWidget& dialog) {
        EXPECT_EQ(child<QDoubleSpinBox>(dialog, "right")->suffix(), u"\u00a0мм"_s);
        QTest::mouseClick(child<QPushButton>(dialog, "cancel"), Qt::LeftButton);
    });
    child<QAction>(*window, "offset")->trigger();
    setTextTranslator({});
    setSystemLocale(std::nullopt);
}

TEST_F(Preview, CaptionsAreInTheUsersLanguage) {
    setTextTranslator([](const QString& english) { return "<" + english + ">"; });
    openList(1);
    waitForEnd();
    EXPECT_EQ(child<QAction>(*window, "print")->text(), "<Print>");
    EXPECT_EQ(text("state"), "<1 page");
    setTextTranslator({});
}

TEST_F(Preview, EveryToolHasATipAndAName) {
    open(std::make_unique<StripLabels>(0, 3, "L-1"));
    auto* bar = child<QToolBar>(*window, "previewBar");
    int tools = 0;
    for (const auto* button : bar->findChildren<QToolButton*>()) {
        if (!button->objectName().endsWith("Button"))
            continue;
        ++tools;
        EXPECT_FALSE(button->accessibleName().isEmpty()) << qPrintable(button->objectName());
        EXPECT_FALSE(button->toolTip().isEmpty()) << qPrintable(button->objectName());
        EXPECT_FALSE(button->icon().isNull()) << qPrintable(button->objectName());
        EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0) << qPrintable(button->objectName());
    }
    EXPECT_EQ(tools, 12);
}

TEST(Printing, MovesThePrintedSheetByTheOffsetAlone) {
    const auto run = finished(std::make_unique<StripLabels>(0, 31, "L-1"));
    const QTemporaryDir folder;
    const auto printed = [&](const QString& name, QPoint offset, int from, int to) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(folder.filePath(name));
        if (from > 0) {
            printer.setPrintRange(QPrinter::PageRange);
            printer.setFromTo(from, to);
        }
        preparePrinter(printer, run->document());
        EXPECT_TRUE(printDocument(run->document(), printer, offset));
        return tools::words(folder.filePath(name));
    };
    const auto plain = printed("plain.pdf", {}, 0, 0);
    const auto moved = printed("moved.pdf", {72, -144}, 0, 0);
    ASSERT_EQ(plain.size(), moved.size());
    EXPECT_NEAR(plain[0].left, 360 / 20.0, 0.1);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        EXPECT_NEAR(moved[i].left - plain[i].left, 3.6, 0.1);
        EXPECT_NEAR(moved[i].top - plain[i].top, -7.2, 0.1);
    }
    const auto second = printed("second.pdf", {}, 2, 2);
    EXPECT_EQ(second.front().text, "Label");
    EXPECT_EQ(second[1].text, "31");
    EXPECT_TRUE(tools::output("pdfinfo", {folder.filePath("second.pdf")})
                    .contains(QRegularExpression("Pages:\\s+1")));
}
