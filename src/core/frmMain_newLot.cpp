// A delivery: a new lot of the chemical on show, and the prices of the formulas that take it.
#include "core/NewLotWindow.h"
#include "core/RepricingWindow.h"
#include "core/frmMain.h"
#include "mixer/ctlSorvanto.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Plurals.h"
#include "records/NewLot.h"
#include "screens/BrowsingScreen.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

/// Of a formula that is not stored it is not known what it takes.
bool takes(int formula, const clsChemical& chemical) {
    const std::vector<UsingFormula> all = formulasUsing(chemical.ChemicalID);
    return formula == 0 ||
           std::any_of(all.begin(), all.end(), [&](const UsingFormula& one) { return one.key == formula; });
}

}  // namespace

/// Why no lot can be added now; empty when one can.
QString frmMain::newLotProblem(const clsChemical& chemical) const {
    const auto* typed = dynamic_cast<const TypedText*>(screen(chemicals));
    if ((typed && typed->hasTypedText()) || chemical.chm_Name.isEmpty())
        return translated(u"Save or cancel what you typed first. Then add the new lot."_s);
    if (m_control && m_control->hasUnloggedMix())
        return translated(
            u"A mix is not logged yet: it would be logged with the new lot. Log it or put it aside first."_s);
    if (const auto formula = m_control ? m_control->formulaToMix() : std::nullopt;
        formula && takes(*formula, chemical))
        return translated(
            u"A formula with this chemical is in the mixer and not mixed yet: it would be logged with "
            "the new lot. Mix and log it first, or start the program again to give it up."_s);
    return {};
}

void frmMain::showNewLot() {
    guarded(u"frmMain:showNewLot"_s, [&] {
        auto* listed = dynamic_cast<BrowsingScreen*>(screen(chemicals));
        if (m_current != chemicals || !listed || listed->shownKey() == 0)
            return;
        const clsChemicalPtr chemical = clsChemical().openChemical(listed->shownKey(), QString());
        if (!chemical || chemical->ChemicalID == 0)
            return;
        if (const QString problem = newLotProblem(*chemical); !problem.isEmpty()) {
            platform::MsgBox(problem, {platform::Buttons::Ok, platform::Icon::Information});
            return;
        }
        NewLotWindow window(m_context, chemical, this);
        platform::asker().showModal(window, [&] { window.exec(); });
        if (window.added())
            newLotAdded(*window.added(), window.changed());
    });
}

/// Both screens show what the file holds now; the chemicals the new lot, as after saving.
void frmMain::newLotAdded(const clsChemical& lot,
                          const std::map<std::int16_t, platform::Currency>& formerCosts) {
    if (auto* listed = dynamic_cast<BrowsingScreen*>(screen(chemicals))) {
        listed->getData();
        listed->lockForm();
        listed->showRecord(lot.ChemicalID);
    }
    announcePrices(
        platform::counted(
            translated(u"New lot %2: %1 formula uses it now | New lot %2: %1 formulas use it now"_s),
            static_cast<std::int64_t>(formerCosts.size()))
            .replace(u"%2"_s, lot.chm_Lot),
        formerCosts);
}

void frmMain::announcePrices(const QString& text,
                             const std::map<std::int16_t, platform::Currency>& formerCosts) {
    rereadFormulas();
    Happening happening{text, {}, false};
    if (!formerCosts.empty())
        happening.actions.push_back({translated(u"Recalculate"_s),
                                     [window = QPointer<frmMain>(this), formerCosts] {
                                         if (window)
                                             window->showRepricing(formerCosts);
                                     },
                                     false});
    announce(happening);
}

void frmMain::showRepricing(const std::map<std::int16_t, platform::Currency>& formerCosts) {
    guarded(u"frmMain:showRepricing"_s, [&] {
        RepricingWindow window(formerCosts, this);
        platform::asker().showModal(window, [&] { window.exec(); });
        if (window.stored() == 0)
            return;
        rereadFormulas();
        announce(platform::counted(translated(u"%1 formula recalculated | %1 formulas recalculated"_s),
                                   static_cast<std::int64_t>(window.stored())));
    });
}

/// A formula that is being changed stays as it is; its sums are worked out when it is saved.
void frmMain::rereadFormulas() {
    auto* listed = dynamic_cast<BrowsingScreen*>(screen(formulas));
    if (!listed)
        return;
    listed->rereadRecord();
    if (m_current == formulas)
        listed->refreshForm();
}

}  // namespace sorvanto
