// The stored content of the command bar.
#include "core/CommandBands.h"
#include "Golden.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

QString kindName(ToolKind kind) {
    switch (kind) {
    case ToolKind::Button:
        return "button";
    case ToolKind::Separator:
        return "separator";
    case ToolKind::TextBox:
        return "text box";
    case ToolKind::MenuEntry:
        return "menu entry";
    case ToolKind::SubMenu:
        return "opens";
    case ToolKind::Host:
        return "host";
    }
    return {};
}

QString kindName(BandKind kind) {
    switch (kind) {
    case BandKind::MenuBar:
        return "menu bar";
    case BandKind::Menu:
        return "menu";
    case BandKind::ToolBar:
        return "tool bar";
    case BandKind::SideBar:
        return "side bar";
    case BandKind::Host:
        return "host";
    case BandKind::Group:
        return "group";
    }
    return {};
}

QString described(const Band& band, const QString& indent) {
    QString text = u"%1%2: %3"_s.arg(indent, band.name(), kindName(band.kind()));
    if (!band.caption().isEmpty())
        text += u" \"%1\""_s.arg(band.caption());
    text += band.visible() ? "\n" : " (hidden)\n";
    for (const auto& tool : band.tools()) {
        if (tool->kind() == ToolKind::Separator) {
            text += indent + "    -\n";
            continue;
        }
        text += u"%1    %2: %3"_s.arg(indent, tool->name(), kindName(tool->kind()));
        if (tool->kind() == ToolKind::SubMenu)
            text += " " + tool->subBand();
        if (!tool->caption().isEmpty())
            text += u" \"%1\""_s.arg(tool->caption());
        text += u", %1\n"_s.arg(tool->category());
    }
    return text;
}

TEST(CommandBands, StandAsStored) {
    CommandBar bar;
    sorvanto::buildCommandBands(bar);
    QString text;
    for (const auto& band : bar.bands()) {
        text += described(*band, {});
        if (band->name() != "Forms")
            continue;
        for (const QString name : {"Current", "Formulas", "Chemicals", "Logs", "Patients"})
            text += described(band->childBand(name), "    ");
    }
    support::expectGolden("core/command_bands.txt", text);
}

TEST(CommandBands, AreFifteenInTheStoredOrder) {
    CommandBar bar;
    sorvanto::buildCommandBands(bar);
    QStringList names;
    for (const auto& band : bar.bands())
        names << band->name();
    EXPECT_EQ(names.join(' '),
              "Sorvanto Forms MainBar mnuMain mnuFile mnuHelp mnuPrint FormBar mnuForms Formulas "
              "CurrentFormula Chemicals Logs Patients mnuExport");
}

TEST(CommandBands, AreFoundByNameAlone) {
    CommandBar bar;
    sorvanto::buildCommandBands(bar);
    EXPECT_EQ(bar.band("mnuFile").tool("mnuPrint").subBand(), "mnuPrint");
    EXPECT_EQ(bar.band("mnuPrint").tool("mnuLabel").kind(), ToolKind::MenuEntry);
    EXPECT_THROW(bar.band("Current"), RuntimeError);
    EXPECT_THROW(bar.band("MainBar").tool("mnuLabel"), RuntimeError);
}

}  // namespace
