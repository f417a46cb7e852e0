#include "mixing/frmMake.h"

#include "ui_frmMake.h"
#include "platform/basic/Numbers.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

namespace sorvanto {

frmMake::frmMake(QWidget* parent) : ModalForm(parent), ui(std::make_unique<Ui::frmMake>()) {
    ui->setupUi(this);
    ui->txtQTY->setFormats("####0", "####0;;Null");
    ui->txtQTY->setBounds(1, 1000);
    connect(ui->OKButton, &QPushButton::clicked, this, &frmMake::OKButton_Click);
    connect(ui->CancelButton, &QPushButton::clicked, this, &frmMake::CancelButton_Click);
    connect(ui->chkPrint, &QCheckBox::toggled, this, [this](bool checked) { m_printWorksheet = checked; });
    translateForm();
}

frmMake::~frmMake() = default;

void frmMake::translateForm() {
    guarded("frmMake:translateForm", [&] {
        setWindowTitle(translated("Quantity to Make"));
        ui->lblQty->setText(translated("Enter Quantity"));
        ui->chkPrint->setText(translated("Print Worksheet"));
        ui->OKButton->setText(translated("OK"));
        ui->CancelButton->setText(translated("Cancel"));
    });
}

void frmMake::MakeQty(double quantity) {
    m_quantity = quantity;
    ui->txtQTY->setText(platform::numberText(quantity));
}

void frmMake::printWorksheet(bool wanted) {
    m_printWorksheet = wanted;
    ui->chkPrint->setChecked(wanted);
}

void frmMake::onActivate() {
    guarded("frmMake:Form_Activate", [&] {
        ui->txtQTY->setFocus();
        ui->txtQTY->selectAll();
    });
}

void frmMake::OKButton_Click() {
    guarded("frmMake:OKButton_Click", [&] {
        // What the box can't read as one number inside its bounds is never guessed: its hint shows.
        if (!ui->txtQTY->acceptable())
            return;
        m_quantity = platform::leadingNumber(ui->txtQTY->text());
        hide();
    });
}

void frmMake::CancelButton_Click() {
    guarded("frmMake:CancelButton_Click", [&] {
        m_quantity = 0;
        hide();
    });
}

}  // namespace sorvanto
