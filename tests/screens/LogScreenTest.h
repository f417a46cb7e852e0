// The log screen on three batches, walked in the order of their keys.
#pragma once

#include "ScreenTest.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/ReportList.h"
#include "screens/frmLog.h"

class LogScreenTest : public ScreenTest {
protected:
    void seed() override;
    void openScreen() {
        load();
        click("cmdLogs");
    }
    void edit() {
        openScreen();
        click("cmdEdit");
    }
    sorvanto::frmLog& log() const { return screen<sorvanto::frmLog>(sorvanto::logs); }
    QString shown(const QString& name) const { return text(sorvanto::logs, name); }
    platform::RecordGrid& lines() const {
        return control<platform::RecordGrid>(sorvanto::logs, "grdIngredients");
    }
    platform::ReportList& steps() const { return control<platform::ReportList>(sorvanto::logs, "lstCustom"); }
    platform::TextBox& box(const QString& name) const {
        return control<platform::TextBox>(sorvanto::logs, name);
    }
    /// The cells of a row as shown, joined by "|".
    static QString row(const platform::RecordGrid& grid, int number);
    /// The nine values of the tab of results, joined by "|".
    QString results() const;
    /// All columns of a batch but the named ones, joined by "|".
    QString stored(int key) const;
};
