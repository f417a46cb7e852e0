#include "mixing/frmSorvanto.h"

#include "mixer/MixSession.h"
#include "mixer/ctlSorvanto.h"
#include "mixing/FormulaDocument.h"
#include "mixing/frmInitials.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Recordset.h"
#include "platform/widgets/CommandBar.h"
#include "records/clsFormula.h"
#include "shared/BatchLog.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/MainWindow.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

/// Whether the mix was made of a stored formula that has been deleted since.
bool isFormulaGone(Context& context, const platform::XmlDocumentPtr& document) {
    return guarded(u"frmSorvanto:isFormulaGone"_s, false, [&] {
        const std::int16_t formula = formulaDocumentID(document);
        if (formula <= 0)
            return false;
        const auto rows = platform::Recordset::create();
        rows->open(u"SELECT FormulaID FROM Formula WHERE FormulaID = "_s + QString::number(formula),
                   openDB(context), platform::LockType::ReadOnly);
        return rows->recordCount() == 0;
    });
}

}  // namespace

frmSorvanto::frmSorvanto(Context& context, QWidget* parent)
    : frmSorvanto(context, MixerEnvironment::real(), parent) {}

frmSorvanto::frmSorvanto(Context& context, MixerEnvironment environment, QWidget* parent)
    : RecordScreen(context, parent), m_log(context),
      ctlSorvanto1(new ctlSorvanto(std::move(environment), this)) {
    setObjectName("frmSorvanto");
    ctlSorvanto1->setObjectName("ctlSorvanto1");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(ctlSorvanto1);
    connect(ctlSorvanto1, &ctlSorvanto::mixDone, this, &frmSorvanto::ctlSorvanto1_mixDone);
    connect(ctlSorvanto1, &ctlSorvanto::enableForm, this, &frmSorvanto::ctlSorvanto1_enableForm);
}

frmSorvanto::~frmSorvanto() {
    if (batchJournal == this)
        batchJournal = nullptr;
}

void frmSorvanto::Form_Load() {
    frmInitials::install(m_context);
    batchJournal = this;
    ctlSorvanto1->setLogBook(&m_log);
    ctlSorvanto1->setUnitSource([](int formulaID) {
        return guarded(u"frmSorvanto:unitOf"_s, QString(), [&] {
            return platform::deref(clsFormula().openFormula(platform::toInt16(formulaID), QString()))
                .frm_Units;
        });
    });
    // A mix that reached the log just before the program died must not be offered again.
    ctlSorvanto1->setLoggedTest([&context = m_context](const QString& lot) {
        return guarded(u"frmSorvanto:isLogged"_s, false,
                       [&] { return platform::deref(context.window).batchLog().isLogged(lot); });
    });
}

std::int16_t frmSorvanto::Listener() const {
    return guarded(u"frmSorvanto:GetListener"_s, std::int16_t(0), [&] { return RecordScreen::Listener(); });
}

void frmSorvanto::Listener(std::int16_t value) {
    guarded(u"frmSorvanto:setListener"_s, [&] { RecordScreen::Listener(value); });
}

std::int16_t frmSorvanto::closeForm() {
    return guarded(u"frmSorvanto:closeForm"_s, std::int16_t(0), [&] {
        ctlSorvanto1->CloseControl();
        return std::int16_t(0);
    });
}

void frmSorvanto::takeDown(const BatchRows& rows) { ctlSorvanto1->takeDown(rows); }
void frmSorvanto::noteDeletion(const BatchRows& rows) { ctlSorvanto1->noteDeletion(rows); }
void frmSorvanto::undoDeletion() { ctlSorvanto1->undoDeletion(); }
void frmSorvanto::noteRestored(const BatchRows& rows) { ctlSorvanto1->noteRestored(rows); }

void frmSorvanto::ctlSorvanto1_mixDone(const platform::XmlDocumentPtr& formula,
                                       const platform::XmlDocumentPtr& results) {
    guarded(u"frmSorvanto:ctlSorvanto1_mixDone"_s, [&] {
        MainWindow& main = platform::deref(m_context.window);
        if (main.batchLog().addLog(formula, results))
            ctlSorvanto1->mixLogged();
        else if (isFormulaGone(m_context, formula))
            ctlSorvanto1->mixFormulaGone();
        main.ActiveBar_ToolClick(main.bar().band(u"FormBar"_s).tool(u"cmdFormulas"_s));
    });
}

void frmSorvanto::ctlSorvanto1_enableForm() {
    guarded(u"frmSorvanto:ctlSorvanto1_enableForm"_s,
            [&] { platform::deref(m_context.window).enableForm(); });
}

}  // namespace sorvanto
