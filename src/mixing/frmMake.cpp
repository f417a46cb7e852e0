#include "mixing/frmMake.h"

#include "mixer/BatchPassport.h"
#include "mixer/PanelTexts.h"
#include "platform/basic/Numbers.h"
#include "platform/widgets/Theme.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmMake.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

frmMake::frmMake(QWidget* parent) : ModalForm(parent), m_ui(std::make_unique<Ui::frmMake>()) {
    m_ui->setupUi(this);
    platform::makeCard(*m_ui->lblBatch);
    m_ui->lblBatch->hide();
    m_ui->txtQTY->setFormats(u"####0"_s, u"####0;;Null"_s);
    m_ui->txtQTY->setBounds(1, 1000);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &frmMake::OKButton_Click);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &frmMake::CancelButton_Click);
    connect(m_ui->chkPrint, &QCheckBox::toggled, this, [this](bool checked) { m_printWorksheet = checked; });
    translateForm();
}

frmMake::~frmMake() = default;

void frmMake::translateForm() {
    guarded(u"frmMake:translateForm"_s, [&] {
        setWindowTitle(translated(u"Quantity to Make"_s));
        m_ui->lblQty->setText(translated(u"Enter Quantity"_s));
        m_ui->chkPrint->setText(translated(u"Print Worksheet"_s));
        m_ui->OKButton->setText(translated(u"OK"_s));
        m_ui->CancelButton->setText(translated(u"Cancel"_s));
    });
}

void frmMake::MakeQty(double quantity) {
    m_quantity = quantity;
    m_ui->txtQTY->setText(platform::numberText(quantity));
}

void frmMake::setFormula(const clsFormula& formula) {
    BatchPassport batch;
    batch.name = formula.frm_Name;
    batch.quantity = QString::number(formula.frm_Quantity);
    batch.unit = formula.frm_Units;
    // A line end between number and unit would make two readings of it.
    const QString amount = batch.amount().replace(u' ', QChar::Nbsp);
    batch.quantity = filledIn(translated(u"base batch %1"_s), {amount});
    batch.unit.clear();
    m_ui->lblBatch->setText(batch.line({}));
    m_ui->lblBatch->setVisible(!formula.frm_Name.isEmpty());
}

void frmMake::printWorksheet(bool wanted) {
    m_printWorksheet = wanted;
    m_ui->chkPrint->setChecked(wanted);
}

void frmMake::onActivate() {
    guarded(u"frmMake:Form_Activate"_s, [&] {
        m_ui->txtQTY->setFocus();
        m_ui->txtQTY->selectAll();
    });
}

void frmMake::OKButton_Click() {
    guarded(u"frmMake:OKButton_Click"_s, [&] {
        // What the box can't read as one number inside its bounds is never guessed: its hint shows.
        if (!m_ui->txtQTY->acceptable())
            return;
        m_quantity = platform::leadingNumber(m_ui->txtQTY->text());
        hide();
    });
}

void frmMake::CancelButton_Click() {
    guarded(u"frmMake:CancelButton_Click"_s, [&] {
        m_quantity = 0;
        hide();
    });
}

QuantityAnswer askQuantity(clsFormula& formula, QWidget* parent) {
    frmMake question(parent);
    question.MakeQty(formula.frm_Quantity);
    question.setFormula(formula);
    question.showModal();
    if (question.MakeQty() <= 0)
        return {};
    formula.makeQuantity(platform::toInt16(question.MakeQty()));
    return {true, question.printWorksheet()};
}

}  // namespace sorvanto
