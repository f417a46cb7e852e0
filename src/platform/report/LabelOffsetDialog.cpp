// The dialog's card, its values and the test print.
#include "platform/report/LabelOffsetDialog.h"

#include "platform/basic/SystemLocale.h"
#include "platform/report/LabelTestSheet.h"
#include "platform/report/PrintFlow.h"
#include "platform/report/PrinterQuestion.h"
#include "platform/report/ReportHooks.h"
#include "platform/report/ReportRun.h"
#include "platform/widgets/Theme.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
constexpr double millimetresOfInch = 25.4, mostInches = 0.5;

bool isMetric() { return systemLocale().measurementSystem() == QLocale::MetricSystem; }

double twipsOfUnit() { return isMetric() ? twipsOfInch / millimetresOfInch : twipsOfInch; }

/// Inches or millimetres, as the system measures.
QDoubleSpinBox* lengthBox(const QString& name, QWidget* parent) {
    auto* box = new QDoubleSpinBox(parent);
    const double most = mostInches * twipsOfInch / twipsOfUnit();
    box->setObjectName(name);
    box->setLocale(systemLocale());
    box->setDecimals(2);
    box->setSingleStep(isMetric() ? 0.1 : 0.01);
    box->setRange(-most, most);
    box->setSuffix(u"\u00a0"_s + (isMetric() ? reportText("mm") : u"in"_s));
    box->setAlignment(Qt::AlignRight);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    return box;
}
}  // namespace

LabelOffsetDialog::LabelOffsetDialog(const ReportDefinition& labels, const QString& printerName,
                                     QWidget* parent)
    : QDialog(parent), m_labels(labels) {
    setObjectName(u"labelOffset"_s);
    setWindowTitle(reportText("Align labels"));
    auto* about =
        new QLabel(reportText("Print the test sheet on plain paper, hold it against the label stock and "
                              "enter how far the labels must move. The preview and PDF stay as they are."),
                   this);
    about->setWordWrap(true);
    m_printer = new QComboBox(this);
    m_printer->setObjectName(u"printer"_s);
    m_printer->addItems(printerNames().value_or(QStringList()));
    m_printer->setCurrentIndex(std::max(0, m_printer->findText(printerName)));
    m_right = lengthBox(u"right"_s, this);
    m_down = lengthBox(u"down"_s, this);

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 3 * grid);
    all->setSpacing(2 * grid);
    all->addWidget(about);
    all->addWidget(buildCard());
    all->addStretch();
    all->addLayout(buildButtons());
    setMinimumWidth(54 * grid);
    connect(m_printer, &QComboBox::currentIndexChanged, this, &LabelOffsetDialog::showOffset);
    showOffset();
}

QWidget* LabelOffsetDialog::buildCard() {
    auto* card = new QFrame(this);
    makeCard(*card);
    auto* form = new QFormLayout(card);
    form->setContentsMargins(2 * grid, 2 * grid, 2 * grid, 2 * grid);
    form->setSpacing(grid);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const std::pair<const char*, QWidget*> rows[] = {
        {"&Printer", m_printer}, {"To the &right", m_right}, {"&Down", m_down}};
    for (const auto& [caption, box] : rows) {
        auto* name = new QLabel(reportText(caption), card);
        name->setBuddy(box);
        makeFieldLabel(*name);
        form->addRow(name, box);
    }
    return card;
}

QLayout* LabelOffsetDialog::buildButtons() {
    auto* line = new QHBoxLayout;
    line->setSpacing(grid);
    const auto add = [&](const char* name, const char* caption, auto react) {
        auto* button = new QPushButton(reportText(caption), this);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false);
        line->addWidget(button);
        connect(button, &QPushButton::clicked, this, react);
        return button;
    };
    add("testSheet", "Print &test sheet", &LabelOffsetDialog::printTestSheet)
        ->setEnabled(m_printer->count() > 0);
    line->addStretch();
    auto* ok = add("ok", "OK", &LabelOffsetDialog::accept);
    ok->setDefault(true);
    ok->setEnabled(m_printer->count() > 0);
    add("cancel", "Cancel", &LabelOffsetDialog::reject);
    return line;
}

QPoint LabelOffsetDialog::offset() const {
    return {static_cast<int>(std::lround(m_right->value() * twipsOfUnit())),
            static_cast<int>(std::lround(m_down->value() * twipsOfUnit()))};
}

void LabelOffsetDialog::showOffset() {
    const QPoint kept = printerOffset(m_printer->currentText());
    m_right->setValue(kept.x() / twipsOfUnit());
    m_down->setValue(kept.y() / twipsOfUnit());
}

void LabelOffsetDialog::printTestSheet() {
    try {
        ReportRun run(labelTestSheet(m_labels, reportText("Label test sheet")));
        run.makeAll();
        PrintFlow(run.document(), this, {}).print(m_printer->currentText(), offset());
    } catch (...) {
        reportFailed();
    }
}

void LabelOffsetDialog::accept() {
    try {
        setPrinterOffset(m_printer->currentText(), offset());
    } catch (...) {
        reportFailed();
        return;
    }
    QDialog::accept();
}

}  // namespace platform
