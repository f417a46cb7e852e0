#include "core/NewLotWindow.h"

#include "core/PriceTexts.h"
#include "core/TraceList.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Caption.h"
#include "platform/widgets/Theme.h"
#include "prices/PackPrice.h"
#include "records/ColumnSizes.h"
#include "records/FormulaLines.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Decimal;
using platform::grid;

constexpr int mostUnitSigns = 20;
constexpr double mostMoney = 9e9;  // of a pack; far beyond any, and far from the largest amount

platform::NumberBox* numberBox(const QString& name, const QString& picture, QWidget* parent) {
    auto* box = new platform::NumberBox(parent);
    box->setObjectName(name);
    box->setFormats(picture, picture);
    box->setBounds(0, mostMoney);
    box->setFixedWidth(16 * grid);
    return box;
}

/// A price that isn't of the same order as the former one is worth a second look.
bool isFarFrom(platform::Currency price, platform::Currency former) {
    const auto one = price.tenThousandths(), other = former.tenThousandths();
    return other != 0 && (one > 2 * other || 2 * one < other);
}

Decimal decimalOf(const platform::NumberBox& box) {
    return Decimal::fromText(box.text().toLatin1()).value_or(Decimal());
}

}  // namespace

NewLotWindow::NewLotWindow(const Context& context, clsChemicalPtr former, QWidget* parent)
    : QDialog(parent), m_context(context), m_former(std::move(former)), m_lot(new platform::TextBox(this)),
      m_supplier(new platform::TextBox(this)), m_packUnit(new platform::TextBox(this)),
      m_packPrice(numberBox(u"txtPackPrice"_s, pricePicture, this)),
      m_packSize(numberBox(u"txtPackSize"_s, u"#0.0###"_s, this)),
      m_cost(numberBox(u"txtCost"_s, pricePicture, this)), m_awp(numberBox(u"txtAWP"_s, pricePicture, this)),
      m_calculation(new QLabel(this)), m_until(new QLabel(this)), m_message(new QLabel(this)),
      m_list(new TraceList(u"grdFormulas"_s, this)), m_add(new QPushButton(translated(u"Add Lot"_s), this)) {
    setObjectName(u"NewLotWindow"_s);
    setWindowTitle(translated(u"New lot of %1"_s).replace(u"%1"_s, platform::deref(m_former).chm_Name));
    buildWindow();
    fill();
    for (platform::TextBox* box : {m_lot, m_supplier})
        connect(box, &QLineEdit::textChanged, this, &NewLotWindow::judge);
    connect(m_packUnit, &QLineEdit::textChanged, this, &NewLotWindow::calculate);
    // A number that can't be taken is no new value, but a reason not to add.
    for (const auto& [box, follow] :
         {std::pair(m_packPrice, &NewLotWindow::calculate), std::pair(m_packSize, &NewLotWindow::calculate),
          std::pair(m_cost, &NewLotWindow::takeCost), std::pair(m_awp, &NewLotWindow::judge)}) {
        connect(box, &platform::NumberBox::valueEdited, this, follow);
        connect(box, &QLineEdit::textEdited, this, follow);
    }
    connect(m_add, &QPushButton::clicked, this, &NewLotWindow::add);
    judge();
    QWidget* before = m_lot;
    for (QWidget* next :
         std::initializer_list<QWidget*>{m_supplier, m_packPrice, m_packSize, m_packUnit, m_cost, m_awp}) {
        setTabOrder(before, next);
        before = next;
    }
    // A scanner ends what it reads with Enter: that goes on to the next box, and adds nothing.
    for (const QLineEdit* box : findChildren<QLineEdit*>())
        connect(box, &QLineEdit::returnPressed, this, [this] { focusNextChild(); });
    m_lot->setFocus();
}

void NewLotWindow::buildWindow() {
    m_calculation->setObjectName(u"lblCalculation"_s);
    m_message->setObjectName(u"lblMessage"_s);
    m_until->setObjectName(u"lblUntilNow"_s);
    for (QLabel* label : {m_calculation, m_message, m_until}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addLayout(topRows());
    column->addWidget(m_list, 1);
    column->addLayout(bottomRow());
    platform::giveAccessKeys(*this);
    const QSize room = screen() ? screen()->availableSize() : QSize(100 * grid, 80 * grid);
    resize(std::min(100 * grid, room.width() - 4 * grid), std::min(76 * grid, room.height() - 8 * grid));
}

QLayout* NewLotWindow::topRows() {
    m_lot->setObjectName(u"txtLot"_s);
    m_lot->setColumnSize(columnSize(m_context, u"Chemical"_s, u"chm_Lot"_s));
    m_supplier->setObjectName(u"txtSupplier"_s);
    m_supplier->setColumnSize(columnSize(m_context, u"Chemical"_s, u"chm_Supplier"_s));
    auto* costs = new QHBoxLayout;
    costs->addWidget(m_cost);
    costs->addSpacing(grid);
    costs->addWidget(m_until, 1);
    auto* rows = new QGridLayout;
    rows->setHorizontalSpacing(2 * grid);
    rows->setVerticalSpacing(grid);
    rows->setColumnStretch(1, 1);
    const auto add = [&](QWidget& box, const QString& caption, auto* place) {
        const int row = rows->rowCount();
        rows->addWidget(platform::captionFor(box, caption), row, 0, Qt::AlignRight | Qt::AlignVCenter);
        if constexpr (std::is_base_of_v<QLayout, std::remove_pointer_t<decltype(place)>>)
            rows->addLayout(place, row, 1);
        else
            rows->addWidget(place, row, 1);
    };
    add(*m_lot, translated(u"Lot Number"_s), m_lot);
    add(*m_supplier, translated(u"Supplier"_s), m_supplier);
    add(*m_packPrice, translated(u"Price of a pack"_s), packRow());
    rows->addWidget(m_calculation, rows->rowCount(), 1);
    add(*m_cost, translated(u"Cost per Unit"_s), costs);
    add(*m_awp, translated(u"AWP per Unit"_s), m_awp);
    return rows;
}

QLayout* NewLotWindow::packRow() {
    m_packUnit->setObjectName(u"txtPackUnit"_s);
    m_packUnit->setMaxLength(mostUnitSigns);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * grid);
    row->addWidget(m_packPrice);
    row->addWidget(platform::captionFor(*m_packSize, translated(u"for"_s)));
    row->addWidget(m_packSize);
    m_packSize->setAccessibleName(translated(u"Size of a pack"_s));
    row->addWidget(m_packUnit);
    m_packUnit->setAccessibleName(translated(u"Unit of the pack"_s));
    m_packUnit->setPlaceholderText(translated(u"Unit, such as g"_s));
    m_packUnit->ensurePolished();
    m_packUnit->setFixedWidth(m_packUnit->fontMetrics().horizontalAdvance(m_packUnit->placeholderText()) +
                              4 * grid);
    row->addStretch();
    return row;
}

QLayout* NewLotWindow::bottomRow() {
    m_add->setObjectName(u"cmdAdd"_s);
    platform::setLook(*m_add, "primary");
    auto* cancel = new QPushButton(translated(u"Cancel"_s), this);
    cancel->setObjectName(u"cmdCancel"_s);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_message, 1);
    for (QPushButton* button : {m_add, cancel}) {
        button->setAutoDefault(false);
        bottom->addWidget(button);
    }
    return bottom;
}

void NewLotWindow::fill() {
    const clsChemical& former = *m_former;
    m_supplier->setText(former.chm_Supplier);
    m_cost->setValue(former.chm_Cost);
    m_awp->setValue(former.chm_AWP);
    m_ownCost = m_cost->text();
    m_lots = lotsOf(former.chm_Name);
    listFormulas();
    calculate();
}

void NewLotWindow::listFormulas() {
    m_formulas = formulasUsing(m_former->ChemicalID);
    m_list->setTitle(
        platform::counted(translated(u"%1 formula takes it | %1 formulas take it"_s),
                          static_cast<std::int64_t>(m_formulas.size())),
        m_formulas.empty()
            ? QString()
            : translated(u"untick those that keep lot %1"_s).replace(u"%1"_s, m_former->chm_Lot));
    m_list->setColumns({{translated(u"Formula"_s)}});
    std::vector<QStringList> rows;
    for (const UsingFormula& formula : m_formulas)
        rows.push_back({formula.name});
    m_list->setRows(std::move(rows));
    m_list->setTicked();
}

/// What was typed stays; the formulas are ticked anew, since others take it now.
void NewLotWindow::showAnew(const ChangedMeanwhile& changed) {
    const clsChemicalPtr now = clsChemical().openChemical(m_former->ChemicalID, QString());
    if (now && now->ChemicalID != 0)
        m_former = now;
    m_lots = lotsOf(m_former->chm_Name);
    listFormulas();
    calculate();
    if (m_add->isEnabled())
        m_message->setText(changedText(changed));
}

// Until its last letter is typed, a unit may be another one: "gr" and "gal" are a gram at first. What that gave
// goes with it, and the cost is again the one that no calculation has touched.
void NewLotWindow::calculate() {
    QString text = translated(u"Price, size and unit of a pack give the cost of one unit."_s);
    bool warns = false;
    std::optional<platform::Currency> cost;
    if (!m_packPrice->text().isEmpty() && !m_packSize->text().isEmpty() &&
        !m_packUnit->text().trimmed().isEmpty()) {
        const Pack pack{decimalOf(*m_packPrice), decimalOf(*m_packSize), m_packUnit->text()};
        const PackPrice price = packPrice(pack, m_former->chm_Units);
        text = packPriceText(pack, m_former->chm_Units, price);
        warns = !price.price;
        cost = price.price;
    }
    if (cost)
        m_cost->setValue(*cost);
    else if (m_calculated)
        m_cost->setText(m_ownCost);
    m_calculated = cost.has_value();
    m_calculation->setText(text);
    platform::setLook(*m_calculation, "quiet", !warns);
    platform::setLook(*m_calculation, "caution", warns);
    judge();
}

// What can't be read, or is no number yet, is never put back.
void NewLotWindow::takeCost() {
    m_calculated = false;
    const QString typed = m_cost->text();
    m_ownCost = typed.isEmpty() ? m_former->chm_Cost.toText() : typed;
    judge();
}

void NewLotWindow::judge() {
    const QString why = problem();
    m_message->setText(why);
    m_add->setEnabled(why.isEmpty());
    const bool far = m_cost->problem().isEmpty() && isFarFrom(m_cost->toCurrency(), m_former->chm_Cost);
    m_until->setText(translated(u"until now %1"_s).replace(u"%1"_s, priceText(m_former->chm_Cost)));
    platform::setLook(*m_until, "quiet", !far);
    platform::setLook(*m_until, "caution", far);
}

QString NewLotWindow::problem() const {
    if (m_lot->text().trimmed().isEmpty())
        return translated(u"The lot of the delivery is needed."_s);
    if (hasLot(m_lots, m_lot->text()))
        return translated(u"Lot %1 of this chemical is there already."_s)
            .replace(u"%1"_s, m_lot->text().trimmed());
    for (const platform::NumberBox* box : {m_packPrice, m_packSize, m_cost, m_awp}) {
        if (!box->problem().isEmpty())
            return box->problem();
    }
    return {};
}

NewLot NewLotWindow::delivered() const {
    return {m_lot->text(), m_supplier->text(), m_cost->toCurrency(), m_awp->toCurrency()};
}

std::vector<std::int16_t> NewLotWindow::tickedFormulas() const {
    std::vector<std::int16_t> keys;
    for (const int row : m_list->ticked())
        keys.push_back(m_formulas.at(static_cast<std::size_t>(row)).key);
    return keys;
}

void NewLotWindow::add() {
    guarded(u"NewLotWindow:add"_s, [&] {
        m_lots = lotsOf(m_former->chm_Name);  // another program may have added it
        judge();
        if (!m_add->isEnabled())
            return;
        const std::vector<std::int16_t> keys = tickedFormulas();
        std::map<std::int16_t, platform::Currency> before;
        for (const std::int16_t key : keys)
            before[key] = readTotals(key).cost;
        const AddedLot lot = addNewLot(*m_former, delivered(), keys);
        if (lot.changed)
            return showAnew(*lot.changed);
        m_added = lot.chemical;
        if (!m_added)
            return m_message->setText(translated(u"The lot was not added. Nothing was changed."_s));
        m_changed = std::move(before);
        accept();
    });
}

}  // namespace sorvanto
