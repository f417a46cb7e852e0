#include "screens/PriceTexts.h"

#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/Plurals.h"
#include "shared/Translator.h"

#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr qsizetype mostRivals = 3;

QString rowsText(const std::vector<int>& rows) {
    QStringList numbers;
    for (const int row : rows) {
        if (numbers.size() == mostRivals)
            return numbers.join(u", "_s) + u" …"_s;
        numbers << QString::number(row + 1);
    }
    return numbers.join(u", "_s);
}

QString withText(QString sentence, const QString& text) { return sentence.replace(u"%1"_s, text); }

/// Why the proposal can't be taken; empty for one that can.
QString reason(const PriceProposal& proposal, const PriceRow& row, const PriceColumns& columns) {
    switch (proposal.state) {
    case PriceState::unchanged:
        return translated(u"Unchanged"_s);
    case PriceState::repeated:
        return withText(translated(u"The same as row %1"_s), QString::number(proposal.sameAs + 1));
    case PriceState::unknown:
        return translated(u"No chemical has this NDC, lot or name"_s);
    case PriceState::tooMany:
        return translated(u"Too many chemicals have this NDC, lot or name"_s);
    case PriceState::noPrice:
        return translated(u"The list has no price"_s);
    case PriceState::unreadable: {
        QStringList texts;
        for (const PriceField field :
             {PriceField::price, PriceField::awp, PriceField::packSize, PriceField::packUnit})
            texts << PriceTable::text(row, columns.of(field));
        texts.removeAll(QString());
        return withText(translated(u"Price or pack can’t be read: %1"_s), texts.join(u" · "_s));
    }
    default:
        return {};
    }
}

QString packRemark(const PriceProposal& proposal) {
    if (proposal.hasSize && proposal.hasUnit)
        return {};
    if (!proposal.hasSize && !proposal.hasUnit)
        return translated(u"The list has no pack: taken as the price of one unit"_s);
    return proposal.hasUnit ? translated(u"The list has no pack size: taken as 1"_s)
                            : translated(u"The list has no unit: taken as the chemical’s"_s);
}

}  // namespace

QString priceFaultText(PriceFault fault, const QString& detail) {
    switch (fault) {
    case PriceFault::none:
        return {};
    case PriceFault::unreadable:
        return withText(translated(u"The file can’t be read: %1"_s), detail);
    case PriceFault::tooLarge:
        return translated(u"The list is too large: at most 200,000 rows, 256 columns and 64 MB are read."_s);
    case PriceFault::notATable:
        return translated(u"This is no price list: a text (.csv), .xls or .xlsx is needed."_s);
    case PriceFault::webPage:
        return translated(
            u"This is a web page under another name. Open it in a spreadsheet program and save it as .xlsx or "
            ".csv."_s);
    case PriceFault::locked:
        return translated(u"The workbook is locked with a password. Save it without one."_s);
    case PriceFault::oldWorkbook:
        return translated(u"The workbook is of a format before 1997. Save it as .xlsx or .csv."_s);
    case PriceFault::broken:
        return translated(u"The workbook is damaged and can’t be read."_s);
    case PriceFault::openQuotation:
        return withText(
            translated(
                u"A quotation mark in row %1 is never closed. Another separator may be right, or the file "
                "is cut off."_s),
            detail);
    case PriceFault::empty:
        return translated(u"The list is empty."_s);
    case PriceFault::stopped:
        return translated(u"Reading was stopped."_s);
    }
    return {};
}

QString priceFieldText(PriceField field) {
    switch (field) {
    case PriceField::name:
        return translated(u"Name"_s);
    case PriceField::ndc:
        return translated(u"NDC"_s);
    case PriceField::lot:
        return translated(u"Lot"_s);
    case PriceField::price:
        return translated(u"Price of a pack"_s);
    case PriceField::awp:
        return translated(u"AWP of a pack"_s);
    case PriceField::packSize:
        return translated(u"Pack size"_s);
    case PriceField::packUnit:
        return translated(u"Unit of the pack"_s);
    }
    return {};
}

QString foundByText(FoundBy by) {
    return priceFieldText(
        std::array{PriceField::ndc, PriceField::lot, PriceField::name}.at(static_cast<std::size_t>(by)));
}

QString calculationText(const PriceProposal& proposal, const PriceStock& stock) {
    if (!proposal.found || (!proposal.cost.price && proposal.cost.trouble == PackTrouble::none))
        return {};
    return packPriceText(proposal.pack, stock.at(proposal.place).units, proposal.cost);
}

QStringList remarksOn(const PriceProposal& proposal, const PriceTable& table, const PriceColumns& columns,
                      const PriceStock& stock) {
    const PriceRow& row = table.rows.at(static_cast<std::size_t>(proposal.row));
    QStringList remarks{reason(proposal, row, columns)};
    if (proposal.canBeTaken()) {
        const StockedChemical& chemical = stock.at(proposal.place);
        for (const auto& [now, before] :
             {std::pair{proposal.cost.price, chemical.cost}, {proposal.awp.price, chemical.awp}}) {
            if (now && isDoubtful(*now, before))
                remarks << (*now > before ? translated(u"More than twice as much"_s)
                                          : translated(u"Less than half"_s));
        }
        if (!proposal.rivals.empty())
            remarks << withText(translated(u"Another price in row %1"_s), rowsText(proposal.rivals));
        remarks << packRemark(proposal);
    }
    if (proposal.found && proposal.otherNdc)
        remarks << withText(translated(u"The list has another NDC: %1"_s),
                            PriceTable::text(row, columns.of(PriceField::ndc)));
    if (proposal.alike > 1 && proposal.state != PriceState::tooMany)
        remarks << platform::counted(translated(u"%1 chemical is meant | %1 chemicals are meant"_s),
                                     proposal.alike);
    remarks.removeAll(QString());
    remarks.removeDuplicates();
    return remarks;
}

QString factorText(platform::Currency now, platform::Currency before) {
    if (before.tenThousandths() <= 0)
        return {};
    return platform::shownNumber(platform::format(now.toDouble() / before.toDouble(), u"###,##0.00"_s));
}

}  // namespace sorvanto
