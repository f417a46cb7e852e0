// Lists, dialogs, previews, menus, and what is held open with the mouse or the keyboard.
#include "MatrixTest.h"

#include "config/frmWizard.h"
#include "core/HistoryFileWindow.h"
#include "platform/ask/Ask.h"
#include "platform/report/LabelOffsetDialog.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "reports/rptRX8160.h"
#include "screens/PriceWindow.h"
#include "shared/basMain.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPrintDialog>
#include <QPrinter>
#include <QTabWidget>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

std::vector<ModalThing> MatrixTest::windows() {
    using D = MatrixTest;
    const auto list = [](const QString& screen, const QString& text) {
        return [=](D& d) {
            d.click(screen);
            d.happensIn(u"frmSearchRS"_s, u"cmdCancel"_s);
            d.search(text);
        };
    };
    const auto asked = [](const QString& screen, const QString& tool, const QString& window) {
        return [=](D& d) {
            d.click(screen);
            d.happensIn(window);
            d.click(tool);
        };
    };
    const auto inPreview = [](D& d, const char* action) {
        while (closePreview()) {
        }
        d.click(u"cmdChemicals"_s);
        d.click(u"mnuReport"_s);
        for (QWidget* found : QApplication::topLevelWidgets()) {
            auto* preview = qobject_cast<platform::PreviewWindow*>(found);
            if (!preview || !preview->isVisible())
                continue;
            EXPECT_TRUE(test::waitFor([&] { return preview->isComplete(); }));
            child<QAction>(*preview, action)->trigger();
            break;
        }
        while (closePreview()) {
        }
    };
    const auto menu = [](const QString& name, const QString& inner) {
        return [=](D& d) {
            QMenu* opened = d.window->findChild<QMenu*>(name);
            ASSERT_NE(opened, nullptr) << str(name);
            opened->popup({200, 200});
            if (!inner.isEmpty()) {
                auto* sub = opened->findChild<QMenu*>(inner);
                ASSERT_NE(sub, nullptr) << str(inner);
                sub->popup({260, 220});
                d.happens();
                sub->close();
            } else {
                d.happens();
            }
            opened->close();
        };
    };
    return {
        {"List of batches",
         {u"records/clsSearch showModal"_s, u"class frmSearchRS"_s},
         list(u"cmdLogs"_s, u"cool"_s)},
        {"List of formulas",
         {},
         list(u"cmdFormulas"_s, u"cool"_s),
         false,
         [](D& d) {
             d.sql("INSERT INTO Formula (FormulaID, frm_Name, frm_GUID) VALUES (4, 'Cooling Oil', 'F4')");
         }},
        {"List of chemicals",
         {},
         list(u"cmdChemicals"_s, u"cam"_s),
         false,
         [](D& d) {
             d.sql("INSERT INTO Chemical (ChemicalID, chm_Name, chm_GUID) VALUES (5, 'Camphor oil', 'G5')");
         }},
        {"Quantity to make",
         {u"mixing/frmMake showModal"_s, u"class frmMake"_s},
         asked(u"cmdFormulas"_s, u"cmdMake"_s, u"frmMake"_s)},
        {"Quantity of a worksheet",
         {u"screens/frmFormulaPrint showModal"_s},
         asked(u"cmdFormulas"_s, u"mnuWorksheet"_s, u"frmMake"_s)},
        {"Dates of a report",
         {u"reports/DateRange showModal"_s, u"class frmReportDate"_s},
         asked(u"cmdLogs"_s, u"mnuReport"_s, u"frmReportDate"_s)},
        {"Label position of a batch",
         {u"reports/rptLogAvery8160 showModal"_s, u"class frmSelPrint"_s},
         asked(u"cmdLogs"_s, u"mnuLabel"_s, u"frmSelPrint"_s)},
        {"Label position of a prescription",
         {u"reports/rptRX8160 showModal"_s},
         asked(u"cmdPatients"_s, u"mnuLabel"_s, u"frmSelPrint"_s)},
        {"Options",
         {u"config/frmOptions showModal"_s, u"class frmOptions"_s},
         asked(u"cmdLogs"_s, u"cmdOptions"_s, u"frmOptions"_s)},
        {"Data file",
         {u"config/frmOptions_location openFile"_s, u"platform/widgets/QtAsker QFileDialog"_s},
         [](D& d) {
             d.whileOpen(u"frmOptions"_s, [](QWidget& form) {
                 child<QPushButton>(form, "cmdDB")->click();
                 child<QPushButton>(form, "cmdCancel")->click();
             });
             d.happensIn(u"QFileDialog"_s);
             d.click(u"cmdOptions"_s);
         }},
        {"Server",
         {u"config/frmOptions_location showModal"_s, u"class ServerDialog"_s},
         [](D& d) {
             d.whileOpen(u"frmOptions"_s, [](QWidget& form) {
                 child<QPushButton>(form, "cmdServer")->click();
                 child<QPushButton>(form, "cmdCancel")->click();
             });
             d.happensIn(u"ServerDialog"_s, u"cmdCancel"_s);
             d.click(u"cmdOptions"_s);
         }},
        {"A server's certificate",
         {u"config/ServerDialog openFile"_s},
         [](D& d) {
             d.whileOpen(u"frmOptions"_s, [](QWidget& form) {
                 child<QPushButton>(form, "cmdServer")->click();
                 child<QPushButton>(form, "cmdCancel")->click();
             });
             d.whileOpen(u"ServerDialog"_s, [](QWidget& dialog) {
                 child<QPushButton>(dialog, "cmdCertificate")->click();
                 child<QPushButton>(dialog, "cmdCancel")->click();
             });
             d.happensIn(u"QFileDialog"_s);
             d.click(u"cmdOptions"_s);
         }},
        {"About",
         {u"core/frmMain_switch showModal"_s, u"class frmAbout"_s},
         asked(u"cmdFormulas"_s, u"mnuAbout"_s, u"frmAbout"_s)},
        {"Health",
         {u"core/frmMain_switch showModal"_s, u"class HealthPage"_s},
         asked(u"cmdFormulas"_s, u"mnuHealth"_s, u"HealthPage"_s)},
        {"Where did it go",
         {u"core/frmMain_trace showModal"_s, u"class TraceWindow"_s},
         asked(u"cmdFormulas"_s, u"mnuTrace"_s, u"TraceWindow"_s)},
        {"Where used", {}, asked(u"cmdLogs"_s, u"cmdTrace"_s, u"TraceWindow"_s)},
        {"History",
         {u"core/frmMain_history showModal"_s, u"class HistoryWindow"_s},
         asked(u"cmdFormulas"_s, u"mnuHistory"_s, u"HistoryWindow"_s)},
        {"New lot, refused",
         {u"core/frmMain_newLot MsgBox"_s},
         asked(u"cmdChemicals"_s, u"cmdNewLot"_s, u"AskDialog"_s)},
        {"Recalculate",
         {u"core/frmMain_newLot showModal"_s, u"class RepricingWindow"_s},
         asked(u"cmdFormulas"_s, u"mnuRecalculate"_s, u"RepricingWindow"_s)},
        {"Price list's file",
         {u"screens/frmChemicalPrices openFile"_s},
         asked(u"cmdChemicals"_s, u"cmdImport"_s, u"QFileDialog"_s)},
        {"Prices",
         {u"screens/frmChemicalPrices showModal"_s, u"class PriceWindow"_s},
         [](D& d) {
             d.folder.write(u"list.csv"_s, "Name,Price\nAspirin,1.50\n");
             d.happensIn(u"PriceWindow"_s);
             const QString path = d.folder.path(u"list.csv"_s);
             PriceWindow window(openDB(), PriceFile(path), path, d.window.get());
             platform::asker().showModal(window, [&] { window.exec(); });
         }},
        {"Change history",
         {u"core/HistoryWindow showModal"_s, u"class HistoryFileWindow"_s},
         [](D& d) {
             d.click(u"cmdFormulas"_s);
             d.happensIn(u"HistoryFileWindow"_s);
             HistoryFileWindow window(basMain::context(), openDB(), d.window.get());
             platform::asker().showModal(window, [&] { window.exec(); });
         }},
        {"Language wizard",
         {u"config/Configuration showModal"_s, u"class frmWizard"_s},
         [](D& d) {
             d.happensIn(u"frmWizard"_s);
             frmWizard wizard;
             platform::asker().showModal(wizard, [&] { wizard.exec(); });
         }},
        {"Label alignment",
         {u"platform/report/PreviewWindow showModal"_s, u"class LabelOffsetDialog"_s},
         [](D& d) {
             d.happensIn(u"labelOffset"_s);
             const rptRX8160 report(basMain::context());
             platform::LabelOffsetDialog dialog(report.definition(), QString(), d.window.get());
             platform::asker().showModal(dialog, [&] { dialog.exec(); });
         }},
        {"Print dialog",
         {u"platform/report/PrintFlow QPrintDialog"_s, u"platform/report/PrintFlow showModal"_s},
         [](D& d) {
             d.happensIn(u"printDialog"_s);
             QPrinter printer;
             QPrintDialog dialog(&printer, d.window.get());
             dialog.setObjectName(u"printDialog"_s);
             platform::asker().showModal(dialog, [&] { dialog.exec(); });
         }},
        {"No printer",
         {u"platform/report/PrintFlow MsgBox"_s},
         [=](D& d) {
             d.happensIn(u"AskDialog"_s, u"No"_s);
             inPreview(d, "print");
         }},
        {"PDF to save",
         {u"platform/report/PrintFlow showModal"_s, u"class SaveDialog"_s},
         [=](D& d) {
             d.happensIn(u"savePdfDialog"_s);
             inPreview(d, "savePdf");
         }},
        {"Preview",
         {},
         [](D& d) {
             d.click(u"cmdChemicals"_s);
             d.click(u"mnuReport"_s);
             d.happens();
             while (closePreview()) {
             }
         },
         false,
         {},
         false,
         1,
         false},
        {"Menu", {}, menu(u"mnuFile"_s, {})},
        {"Sub-menu", {}, menu(u"mnuFile"_s, u"mnuPrint"_s)},
        {"Print drop-down", {}, menu(u"cmdPrint"_s, {})},
        {"Context menu of a box",
         {},
         [](D& d) {
             d.unlock(u"cmdLogs"_s);
             auto& box = d.control<QLineEdit>(logs, u"txtlog_Initials"_s);
             const std::unique_ptr<QMenu> context(box.createStandardContextMenu());
             context->popup({300, 300});
             d.happens();
             context->close();
         }},
        {"Drop-down list",
         {},
         [](D& d) {
             d.unlock(u"cmdChemicals"_s);
             auto& units = d.control<platform::ChoiceBox>(chemicals, u"cbochm_Units"_s);
             units.showPopup();
             d.happens();
             units.hidePopup();
         }},
        {"Calendar",
         {},
         [](D& d) {
             d.unlock(u"cmdPatients"_s);
             child<QToolButton>(d.control<QWidget>(patients, u"txtpat_BDay"_s), "")->click();
             d.happens();
             if (QWidget* popup = QApplication::activePopupWidget())
                 popup->close();
         }},
        {"Open grid cell",
         {},
         [](D& d) {
             d.openCell(u"99"_s);
             auto& grid = d.control<platform::RecordGrid>(formulas, u"grdIngredients"_s);
             d.happens();
             EXPECT_TRUE(grid.isCellOpen());
             grid.dropEdit();
         }},
        {"Drag in progress",
         {},
         [](D& d) {
             QWidget* screen = d.window->screen(formulas);
             QTest::mousePress(screen, Qt::LeftButton);
             d.happens();
             QTest::mouseRelease(screen, Qt::LeftButton);
         }},
        {"Column being widened",
         {},
         [](D& d) {
             d.click(u"cmdFormulas"_s);
             d.click(u"cmdFirst"_s);
             child<QTabWidget>(*d.window->screen(formulas), "tabFormula")->setCurrentIndex(1);
             auto* header = d.control<platform::RecordGrid>(formulas, u"grdIngredients"_s).horizontalHeader();
             const QPoint edge(header->sectionViewportPosition(2) + header->sectionSize(2) - 1, 8);
             const int before = header->sectionSize(2);
             QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
             QTest::mouseMove(header->viewport(), edge + QPoint(12, 0));
             QMouseEvent move(QEvent::MouseMove, QPointF(edge + QPoint(24, 0)),
                              header->viewport()->mapToGlobal(QPointF(edge + QPoint(24, 0))), Qt::NoButton,
                              Qt::LeftButton, Qt::NoModifier);
             QApplication::sendEvent(header->viewport(), &move);
             EXPECT_NE(header->sectionSize(2), before) << "nothing is dragged";
             d.happens();
             QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(24, 0));
         }},
        {"Half-typed note, signed at once",
         {},
         [](D& d) {
             d.unlock(u"cmdLogs"_s);
             d.typed(logs, u"txtlog_Notes"_s);
             d.happens();
         },
         false,
         {},
         false,
         1,
         true,
         true},
        {"Open grid cell, signed at once",
         {},
         [](D& d) {
             d.openCell(u"99"_s);
             d.happens();
         },
         false,
         {},
         false,
         1,
         true,
         true},
        {"Half-typed note",
         {},
         [](D& d) {
             d.unlock(u"cmdLogs"_s);
             d.typed(logs, u"txtlog_Notes"_s);
             d.happens();
             EXPECT_EQ(str(d.control<platform::MemoBox>(logs, u"txtlog_Notes"_s).text()), "typed");
         }},
        {"Signing",
         {u"records/clsLog_add showModal"_s, u"class frmInitials"_s},
         [](D& d) {
             d.whileOpen(u"frmInitials"_s, [&d](QWidget& form) {
                 child<platform::TextBox>(form, "txtInitials")->setText(u"RK"_s);
                 child<platform::TextBox>(form, "txtVerified")->setText(u"LM"_s);
                 d.happens();
                 child<QPushButton>(form, "cmdOK")->click();
             });
             EXPECT_TRUE(test::waitFor([&] { return d.happened == 1 && !modalOnShow(); }));
         },
         true},
        {"Initials are missing",
         {u"mixing/frmInitials MsgBox"_s},
         [](D& d) {
             d.whileOpen(u"frmInitials"_s, [](QWidget& form) {
                 child<QPushButton>(form, "cmdOK")->click();
                 child<platform::TextBox>(form, "txtInitials")->setText(u"RK"_s);
                 child<platform::TextBox>(form, "txtVerified")->setText(u"LM"_s);
                 child<QPushButton>(form, "cmdOK")->click();
             });
             d.happensIn(u"AskDialog"_s, u"OK"_s);
             EXPECT_TRUE(test::waitFor([&] { return d.happened == 1 && !modalOnShow(); }));
         },
         true},
    };
}
