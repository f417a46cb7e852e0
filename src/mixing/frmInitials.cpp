#include "mixing/frmInitials.h"

#include "mixer/BatchPassport.h"
#include "mixer/MixSummary.h"
#include "mixer/MixTables.h"
#include "mixer/ctlSorvanto.h"
#include "mixing/FormulaDocument.h"
#include "mixing/MixSummaryCard.h"
#include "mixing/frmMake.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/widgets/FreshKeys.h"
#include "platform/widgets/Theme.h"
#include "records/ColumnSizes.h"
#include "reports/ReportFlow.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"
#include "ui_frmInitials.h"

#include <QAction>

using namespace Qt::StringLiterals;

namespace sorvanto {

frmInitials::frmInitials(Context& context, QWidget* parent)
    : ModalForm(parent), m_context(context), m_ui(std::make_unique<Ui::frmInitials>()) {
    m_ui->setupUi(this);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmInitials::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmInitials::cmdCancel_Click);
    connect(m_ui->txtfrm_Name, &QLineEdit::returnPressed, this, &frmInitials::nameEntered);
    connect(m_ui->txtInitials, &QLineEdit::returnPressed, this, [this] { m_ui->txtVerified->setFocus(); });
    connect(m_ui->txtVerified, &QLineEdit::returnPressed, this, &frmInitials::cmdOK_Click);
    // Below the rest, which stays where it is.
    m_card = new MixSummaryCard(this);
    m_ui->layout6->addWidget(m_card);
    m_same = m_ui->txtVerified->addAction(platform::icon(u"warning"_s, platform::theme().warning),
                                          QLineEdit::TrailingPosition);
    m_same->setVisible(false);
    connect(m_ui->txtInitials, &QLineEdit::textChanged, this, &frmInitials::showSameInitials);
    connect(m_ui->txtVerified, &QLineEdit::textChanged, this, &frmInitials::showSameInitials);
    new platform::FreshKeys(*this);  // the dialog comes up by itself, perhaps under typing hands
    Form_Load();
}

frmInitials::~frmInitials() = default;

void frmInitials::install(Context& context) {
    makeSigningDialog = [&context] { return std::make_unique<frmInitials>(context); };
}

void frmInitials::Form_Load() {
    guarded(u"frmInitials:Form_Load"_s, [&] {
        setWindowTitle(translated(u"Log Initials"_s));
        m_ui->txtInitials->setColumnSize(columnSize(m_context, u"Log"_s, u"log_Initials"_s));
        m_ui->txtVerified->setColumnSize(columnSize(m_context, u"Log"_s, u"log_Verified"_s));
        m_ui->lbllog_Initials->setText(translated(u"Logged"_s));
        m_ui->lbllog_Verified->setText(translated(u"Verified"_s));
        m_ui->txtfrm_Name->setAccessibleName(translated(u"Formula Name"_s));
        m_ui->txtfrm_Name->setPlaceholderText(translated(u"Formula Name"_s));
        m_ui->cmdOK->setText(translated(u"OK"_s));
        m_ui->cmdCancel->setText(translated(u"Cancel"_s));
    });
}

void frmInitials::setFormula(const platform::XmlDocumentPtr& document) {
    guarded(u"frmInitials:setformula"_s, [&] {
        m_document = document;
        m_formula = std::make_shared<clsFormula>();
        const std::int16_t formulaID = formulaDocumentID(document);
        if (formulaID >= 1)
            openLoggedFormula(formulaID);
        else
            setNameWritable(true);
    });
    showBatch();
}

void frmInitials::setResults(const platform::XmlDocumentPtr& document) {
    guarded(u"frmInitials:setResults"_s, [&] {
        const auto reached = m_context.window ? m_context.window->mixer().reached() : std::nullopt;
        m_card->setSummary(mixSummary(m_document, document, reached));
    });
}

// Of the formula as it will be logged; a mix without one is named by its document alone.
void frmInitials::showBatch() {
    guarded(u"frmInitials:showBatch"_s, [&] {
        const bool known = m_formula && m_formula->FormulaID != 0;
        BatchPassport batch = BatchPassport::of(m_document, QString());
        if (known)
            batch = {m_formula->frm_Name, QString::number(m_formula->makeQuantity()), m_formula->frm_Units,
                     jarNames().value(m_formula->frm_JarSize), QString()};
        m_card->setBatch(batch.line({translated(u"%1 in %2"_s), translated(u"lot %1"_s)}));
    });
}

// Shown and not blocked: one person may have to do both.
void frmInitials::showSameInitials() {
    guarded(u"frmInitials:showSameInitials"_s, [&] {
        const QString logged = platform::trimmed(initials());
        const bool same =
            !logged.isEmpty() && logged.compare(platform::trimmed(verified()), Qt::CaseInsensitive) == 0;
        const QString words = same ? translated(u"Logged and verified by the same initials."_s) : QString();
        for (platform::TextBox* box : {m_ui->txtInitials, m_ui->txtVerified}) {
            platform::setLook(*box, "caution", same);
            box->setToolTip(words);
            box->setAccessibleDescription(words);
        }
        m_same->setVisible(same);
        m_same->setText(words);  // and its tip
    });
}

// The log records what was really mixed: type, quantity, jar and programme come from the document.
// Adopted only when complete, so that a document without one of them logs nothing.
void frmInitials::openLoggedFormula(std::int16_t formulaID) {
    const clsFormulaPtr formula = clsFormula().openFormula(formulaID, QString());
    platform::deref(formula).frm_FormType = formulaDocumentNumber(*m_document, u"Type"_s);
    formula->makeQuantity(formulaDocumentNumber(*m_document, u"Make"_s));
    takeProgramme(*formula);
    m_formula = formula;
    setNameWritable(false);
    m_ui->txtfrm_Name->setText(formula->frm_Name);
}

void frmInitials::takeProgramme(clsFormula& formula) const {
    const platform::XmlDocument& document = platform::deref(m_document);
    formula.frm_JarSize = formulaDocumentNumber(document, u"Size"_s);
    const platform::XmlNode programme = document.selectSingleNode(u"//Formula/CustomMix"_s);
    if (!programme)
        throw platform::RuntimeError(platform::error::objectNotSet, u"The document holds no mix programme"_s);
    formula.frm_Mix->loadXML(programme.xml());
}

void frmInitials::setNameWritable(bool writable) {
    m_ui->txtfrm_Name->setText(QString());
    m_ui->txtfrm_Name->setReadOnlyBox(!writable);
}

void frmInitials::log_Lot(const QString& lot) { m_ui->lbllog_Lot->setText(lot); }

QString frmInitials::initials() const { return m_ui->txtInitials->text(); }

QString frmInitials::verified() const { return m_ui->txtVerified->text(); }

clsFormulaPtr frmInitials::getFormula() {
    return guarded(u"frmInitials:getformula"_s, clsFormulaPtr(), [&] {
        const bool loggable = m_formula && m_formula->FormulaID != 0 && !m_cancelled;
        return loggable ? m_formula : clsFormulaPtr();
    });
}

void frmInitials::onActivate() {
    guarded(u"frmInitials:Form_Activate"_s, [&] {
        if (m_ui->txtfrm_Name->isReadOnlyBox())
            m_ui->txtInitials->setFocus();
        else
            m_ui->txtfrm_Name->setFocus();
    });
}

void frmInitials::nameEntered() {
    guarded(u"frmInitials:txtfrm_Name_KeyPress"_s, [&] {
        if (!m_ui->txtfrm_Name->isReadOnlyBox()) {
            m_formula = clsFormula().openFormula(0, m_ui->txtfrm_Name->text());
            makeFormula();
            if (m_formula)
                m_ui->txtfrm_Name->setText(m_formula->frm_Name);
            showBatch();
        }
        m_ui->txtInitials->setFocus();
    });
}

// The mix has run already: the recipe comes from the named formula, jar and programme from the mixer.
// Without a quantity, and after a failure, no formula remains and nothing can be logged.
void frmInitials::makeFormula() {
    guarded(u"frmInitials:makeFormula"_s, [&] {
        if (!m_formula || m_formula->FormulaID <= 0)
            return;
        const clsFormulaPtr named = std::exchange(m_formula, nullptr);
        const clsFormulaPtr copy = clsFormula().openFormula(named->FormulaID, QString());
        const QuantityAnswer answer = askQuantity(platform::deref(copy), this);
        if (!answer.make)
            return;
        if (answer.worksheet)
            showWorksheet(m_context, copy);
        takeProgramme(*copy);
        m_formula = copy;
    });
}

void frmInitials::cmdOK_Click() {
    guarded(u"frmInitials:cmdOK_Click"_s, [&] {
        if (platform::trimmed(verified()).isEmpty() || platform::trimmed(initials()).isEmpty())
            platform::MsgBox(u"Must designate initials of compounder and verifier to log."_s,
                             {platform::Buttons::Ok, platform::Icon::Information},
                             platform::applicationTitle());
        else
            hide();
        platform::deref(m_context.window).mixer().mixerInitialsClosed();
    });
}

void frmInitials::cmdCancel_Click() {
    guarded(u"frmInitials:cmdCancel_Click"_s, [&] {
        m_cancelled = true;
        hide();
        platform::deref(m_context.window).mixer().mixerInitialsClosed();
    });
}

}  // namespace sorvanto
