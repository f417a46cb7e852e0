// The whole window with its real screens on a real, small database, driven as a user drives it: tools of the
// bar, controls by name, questions answered by a script.
//   class ChemicalScreenTest : public ScreenTest { ... };
//   TEST_F(ChemicalScreenTest, ...) { load(); open("cmdChemicals"); click("cmdNext"); ... }
#pragma once

#include "Child.h"
#include "Golden.h"
#include "StandardText.h"
#include "TestProgram.h"
#include "core/frmMain.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/xml/XmlDocument.h"
#include "shared/RecordScreen.h"
#include "shared/basMain.h"

#include <QString>
#include <QStringList>
#include <QTest>
#include <memory>
#include <utility>
#include <vector>

/// How the screens ask before they delete, and before typed text is lost.
inline const platform::BoxStyle yesNo{platform::Buttons::YesNo, platform::Icon::Exclamation};
inline const platform::BoxStyle saveQuestion{platform::Buttons::YesNoCancel, platform::Icon::Exclamation,
                                             false, true};

class ScreenTest : public support::TestProgram {
protected:
    void SetUp() override;
    void TearDown() override;

    /// What the database holds when the program starts; nothing at first. SetUp has made the file.
    virtual void seed() {}
    /// Chemicals 1 to 4: Aspirin, Borax, Camphor, Menthol.
    void seedChemicals() const;
    /// With the chemicals: formula 1 "Cooling Gel" (custom mix of two steps, jar 3, base 10, three lines),
    /// 2 "Plain Base" (type 3, jar 5, base 50, no lines), 3 "Arnica Salve" (custom mix with a step of 3000,
    /// jar 9, base 30, one line). By name: 3, 1, 2.
    void seedFormulas() const;
    /// With the formulas: batches 1 to 3 of formula 1, the newest being 2; two lines each for 1 and 2.
    void seedLogs() const;
    static QString resultsXml(const QString& lot = "AB", const QString& number = "0012");
    static platform::XmlDocumentPtr document(const QString& xml);

    /// Starts the program: the whole load, then the window on show. Statements are kept from its end on.
    void load(sorvanto::Parts parts = sorvanto::realParts(context));

    /// From now on a statement that holds this part fails.
    void failStatement(const QString& part);
    /// Closes the preview on show; false when there is none.
    static bool closePreview();

    /// A tool by its name, wherever it stands on the bar.
    platform::Tool& tool(const QString& name) const;
    /// As a user clicks: nothing happens where the tool is off.
    void click(const QString& name) const { window->bar().click(tool(name)); }
    /// Delivers the click whatever the tool's state.
    void force(const QString& name) const { window->ActiveBar_ToolClick(tool(name)); }
    /// Types into the search box and presses Enter.
    void search(const QString& text) const;
    bool on(const QString& name) const { return tool(name).enabled(); }
    QString caption() const { return window->windowTitle(); }

    template <class Screen>
    Screen& screen(sorvanto::ScreenNumber number) const {
        return dynamic_cast<Screen&>(*window->screen(number));
    }
    template <class Control>
    Control& control(sorvanto::ScreenNumber number, const QString& name) const {
        return *support::child<Control>(*window->screen(number), name);
    }
    /// The text that a control shows.
    QString text(sorvanto::ScreenNumber number, const QString& name) const;

    /// Opens the cell's editor with F2 and types over what is there; the editor stays open.
    static void typeInCell(platform::RecordGrid& grid, int row, const QString& field, const QString& text);
    static QLineEdit* cellEditor(const platform::RecordGrid& grid);

    /// The record tools in the order of the bar, then the entries of the print and export menus.
    static QStringList recordTools();
    /// "on" or "-" for each of them.
    QStringList toolStates() const;
    /// A table with a line for each record tool and a column for each (title, toolStates()).
    static QString stateTable(const std::vector<std::pair<QString, QStringList>>& columns);
    /// "name: read-only|locked|closed|off" or "open" for each control of the screen that has a name, sorted.
    QString lockStates(sorvanto::ScreenNumber number) const;

    std::unique_ptr<sorvanto::frmMain> window;
};
