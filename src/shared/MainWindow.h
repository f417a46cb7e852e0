// What the screens know of the main window: the command bar, the tool clicks, the caption,
// and the few screens that others call.
#pragma once

#include "platform/basic/Currency.h"

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <map>

namespace platform {
class CommandBar;
class Tool;
}  // namespace platform

namespace sorvanto {

class BatchLog;
class Dispensary;
class ctlSorvanto;
class frmCurrFormula;

/// A screen that can hear tool clicks.
class ToolListener {
public:
    virtual ~ToolListener() = default;
    /// The search text is only set for Enter in the search box.
    virtual void m_frmMain_btnClick(const QString& toolName, const QString& searchText) = 0;
};

class MainWindow {
public:
    virtual ~MainWindow() = default;
    virtual platform::CommandBar& bar() = 0;
    /// The handler of a click on a tool, also called by screens to click one for the user.
    virtual void ActiveBar_ToolClick(platform::Tool& tool) = 0;
    virtual void setCaption(const QString& caption) = 0;
    virtual void refreshForm() = 0;
    virtual void enableForm() = 0;

    /// The list is read live while a click is delivered: a screen connected during the delivery hears it too.
    virtual void connectListener(ToolListener& listener) = 0;
    virtual void releaseListener(ToolListener& listener) = 0;

    virtual frmCurrFormula& currentFormulaScreen() = 0;
    virtual BatchLog& batchLog() = 0;
    virtual ctlSorvanto& mixer() = 0;
    /// nullptr where patients are not shown.
    virtual Dispensary* dispensary() { return nullptr; }
    /// Shows what was written down of the record from that moment on, by the clock of the computer.
    virtual void showHistoryOf(const QString& /*table*/, std::int64_t /*key*/, const QString& /*name*/,
                               const QDateTime& /*since*/) {}
    /// Chemicals cost something else than before: announces it, and offers Recalculate where formulas do too.
    /// formerCosts: what those formulas cost before, by their keys.
    virtual void announcePrices(const QString& /*text*/,
                                const std::map<std::int16_t, platform::Currency>& /*formerCosts*/) {}
};

}  // namespace sorvanto
