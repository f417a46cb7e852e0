#include "reports/frmSelPrint.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Hint.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmSelPrint.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

// The sheet of stock; measures are twips, fifteen to a pixel.
constexpr int sheetColumns = 3, sheetRows = 10;
constexpr int positionWidth = 1000, positionHeight = 500, baseTop = 1500;

int pixels(int twips) { return qRound(twips / 15.0); }

}  // namespace

frmSelPrint::frmSelPrint(Context& context, QWidget* parent)
    : ModalForm(parent), m_context(context), m_ui(std::make_unique<Ui::frmSelPrint>()),
      cmdPosition(1, nullptr) {
    m_ui->setupUi(this);
    m_ui->txtLabels->setFormats(u"####0"_s, u"####0"_s);
    m_ui->txtLabels->setBounds(1, 99999);
    m_ui->txtLabels->setValue(1.0);
    connect(m_ui->txtLabels, &platform::NumberBox::valueEdited, this, &frmSelPrint::txtLabels_Change);
    Form_Load();
}

frmSelPrint::~frmSelPrint() = default;

void frmSelPrint::Form_Load() {
    guarded(u"frmSelPrint:Form_Load"_s, [&] {
        translateForm();
        m_context.labelsCancelled = true;
        m_ui->lblNum->setGeometry(0, pixels(120), pixels(3000), pixels(360));
        m_ui->txtLabels->setGeometry(0, pixels(480), pixels(1000), pixels(360));
        m_ui->lblStart->setGeometry(0, pixels(840), pixels(3000), pixels(baseTop - 840));
        m_numLabels = 1;
        for (int row = 0; row < sheetRows; ++row)
            for (int column = 0; column < sheetColumns; ++column)
                AddControl(column, row);
    });
}

void frmSelPrint::translateForm() {
    guarded(u"frmSelPrint:translateForm"_s, [&] {
        m_ui->lblNum->setText(translated(u"Number of Labels"_s));
        m_ui->lblStart->setText(translated(u"Select start position for labels"_s));
        setWindowTitle(translated(u"Print Labels"_s));
    });
}

void frmSelPrint::AddControl(int column, int row) {
    guarded(u"frmSelPrint:AddControl"_s, [&] {
        const int index = static_cast<int>(cmdPosition.size());
        const QString tag = u"%1,%2"_s.arg(column).arg(row);
        auto* button = new QPushButton(QString::number(index), m_ui->fraSheet);
        button->setObjectName(u"cmdPosition_%1"_s.arg(index));
        button->setProperty("tag", tag);
        button->setAutoDefault(false);
        button->setAccessibleName(m_ui->lblStart->text() + u" "_s + button->text());
        const int left = column * positionWidth, top = row * positionHeight + baseTop;
        const QPoint corner(pixels(left), pixels(top));
        button->setGeometry(
            {corner, QPoint(pixels(left + positionWidth) - 1, pixels(top + positionHeight) - 1)});
        m_ui->fraSheet->setFixedSize(pixels(left + positionWidth + 100), pixels(top + positionHeight + 500));
        connect(button, &QPushButton::clicked, this, [this, tag] { cmdPosition_Click(tag); });
        cmdPosition.push_back(button);
    });
}

void frmSelPrint::onActivate() {
    guarded(u"frmSelPrint:Form_Activate"_s, [&] {
        m_context.labelsCancelled = true;
        for (QWidget* control : {static_cast<QWidget*>(m_ui->lblStart),
                                 static_cast<QWidget*>(m_ui->txtLabels), static_cast<QWidget*>(m_ui->lblNum)})
            control->move((m_ui->fraSheet->width() - control->width()) / 2, control->y());
        m_ui->txtLabels->setFocus();
        m_ui->txtLabels->selectAll();
    });
}

// A box that holds no number leaves the former one.
void frmSelPrint::txtLabels_Change() {
    if (refuseTooMany())
        return;
    try {
        m_numLabels = platform::toInt16(m_ui->txtLabels->text());
    } catch (const platform::RuntimeError&) {
    }
}

bool frmSelPrint::refuseTooMany() {
    constexpr std::int16_t most = std::numeric_limits<std::int16_t>::max();
    if (platform::leadingNumber(m_ui->txtLabels->text()) <= most)
        return false;
    platform::Hint::tell(*m_ui->txtLabels, translated(u"At most %1."_s).arg(most));
    return true;
}

// The tag is read by one character each, which is why a sheet has at most ten rows and columns.
void frmSelPrint::cmdPosition_Click(const QString& tag) {
    guarded(u"frmSelPrint:cmdPosition_Click"_s, [&] {
        if (!m_ui->txtLabels->acceptable())
            return;
        if (refuseTooMany()) {
            m_ui->txtLabels->setFocus();
            return;
        }
        m_row = static_cast<std::int16_t>(platform::leadingNumber(tag.right(1)) + 1);
        m_column = static_cast<std::int16_t>(platform::leadingNumber(tag.left(1)) + 1);
        m_context.labelsCancelled = false;
        hide();
    });
}

void frmSelPrint::onCloseBox() {
    guarded(u"frmSelPrint:Form_QueryUnload"_s, [&] {
        hide();
        m_row = 0;
        m_column = 0;
    });
}

}  // namespace sorvanto
