// Prices from a supplier's list, taken over from the chemical screen.
#include "platform/ask/Ask.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/LongWork.h"
#include "records/Repricing.h"
#include "screens/PriceTexts.h"
#include "screens/PriceWindow.h"
#include "screens/frmChemical.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

void tell(const QString& sentence) {
    platform::MsgBox(sentence, {platform::Buttons::Ok, platform::Icon::Exclamation});
}

std::vector<RepricedFormula> formulasNow(bool& stopped) {
    platform::LongWork work(translated(u"Comparing prices"_s));
    return formulaPrices([&](double done) {
        stopped = !work.goesOn(done);
        return !stopped;
    });
}

}  // namespace

void frmChemical::importPrices() {
    guarded(u"frmChemical:importPrices"_s, [&] {
        if (!m_locked && (m_new || hasTypedText()))
            return tell(translated(u"Save or cancel what you have typed first."_s));
        const QString path = platform::asker().openFile(
            translated(u"Import prices"_s), translated(u"Price lists"_s) + u"|*.csv;*.txt;*.xls;*.xlsx"_s);
        if (path.isEmpty())
            return;
        PriceFile file(path);
        if (file.fault() != PriceFault::none)
            return tell(priceFaultText(file.fault(), file.detail()));
        bool stopped = false;
        const std::vector<RepricedFormula> before = formulasNow(stopped);
        if (stopped)
            return;
        PriceWindow list(openDB(m_context), std::move(file), path, window());
        platform::asker().showModal(list, [&] { list.exec(); });
        if (list.taken() == 0)
            return;
        openRecord(shownKey());
        refreshForm();
        platform::deref(m_context.window)
            .announcePrices(
                platform::counted(translated(u"%1 price taken | %1 prices taken"_s), list.taken()),
                repriced(before, formulasNow(stopped)));
    });
}

}  // namespace sorvanto
