#include "core/RepricingWindow.h"

#include "core/PriceTexts.h"
#include "core/TraceList.h"
#include "platform/basic/Plurals.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/Theme.h"
#include "screens/PriceTexts.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;

constexpr int priceWidth = 90, differenceWidth = 70;

}  // namespace

RepricingWindow::RepricingWindow(std::map<std::int16_t, platform::Currency> formerCosts, QWidget* parent)
    : QDialog(parent), m_formerCosts(std::move(formerCosts)), m_list(new TraceList(u"grdPrices"_s, this)),
      m_note(new QLabel(this)), m_message(new QLabel(this)),
      m_store(new QPushButton(translated(u"Store"_s), this)) {
    setObjectName(u"RepricingWindow"_s);
    setWindowTitle(translated(u"Recalculate"_s));
    buildWindow();
    connect(m_store, &QPushButton::clicked, this, &RepricingWindow::store);
    connect(m_list, &TraceList::tickChanged, this,
            [this] { m_store->setEnabled(!m_list->ticked().empty()); });
    fill();
}

void RepricingWindow::buildWindow() {
    m_note->setObjectName(u"lblNote"_s);
    m_message->setObjectName(u"lblMessage"_s);
    m_note->setText(translated(
        u"The cost of a formula is worked out anew each time; its AWP is stored when it is saved."_s));
    platform::setLook(*m_note, "quiet");
    for (QLabel* label : {m_note, m_message}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    m_store->setObjectName(u"cmdStore"_s);
    platform::setLook(*m_store, "primary");
    auto* close = new QPushButton(translated(u"Close"_s), this);
    close->setObjectName(u"cmdClose"_s);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_message, 1);
    for (QPushButton* button : {m_store, close}) {
        button->setAutoDefault(false);
        bottom->addWidget(button);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addWidget(m_note);
    column->addWidget(m_list, 1);
    column->addLayout(bottom);
    platform::giveAccessKeys(*this);
    const QSize room = screen() ? screen()->availableSize() : QSize(130 * grid, 80 * grid);
    resize(std::min(125 * grid, room.width() - 4 * grid), std::min(70 * grid, room.height() - 8 * grid));
}

platform::Currency RepricingWindow::formerCost(const RepricedFormula& formula) const {
    const auto known = m_formerCosts.find(formula.key);
    return known == m_formerCosts.end() ? formula.cost : known->second;
}

QStringList RepricingWindow::rowOf(const RepricedFormula& formula) const {
    const platform::Currency before = formerCost(formula);
    return {formula.name,
            priceText(before),
            priceText(formula.cost),
            differenceText(before, formula.cost),
            priceText(formula.storedAWP),
            priceText(formula.awp),
            differenceText(formula.storedAWP, formula.awp)};
}

void RepricingWindow::fill() {
    guarded(u"RepricingWindow:fill"_s, [&] {
        bool stopped = false;
        platform::LongWork work(translated(u"Comparing prices"_s));
        m_formulas = formulaPrices([&](double done) {
            stopped = !work.goesOn(done);
            return !stopped;
        });
        std::erase_if(m_formulas, [this](const RepricedFormula& formula) {
            return formula.storedAWP == formula.awp && formerCost(formula) == formula.cost;
        });
        m_list->setTitle(
            platform::counted(translated(u"%1 formula would change | %1 formulas would change"_s),
                              static_cast<std::int64_t>(m_formulas.size())));
        const TraceColumn difference{u"±"_s, differenceWidth, true};
        m_list->setColumns({{translated(u"Formula"_s)},
                            {translated(u"Cost before"_s), priceWidth, true},
                            {translated(u"Cost now"_s), priceWidth, true},
                            difference,
                            {translated(u"AWP stored"_s), priceWidth, true},
                            {translated(u"AWP now"_s), priceWidth, true},
                            difference});
        std::vector<QStringList> rows;
        for (const RepricedFormula& formula : m_formulas)
            rows.push_back(rowOf(formula));
        m_list->setRows(std::move(rows));
        m_list->setTicked();
        if (stopped)
            m_message->setText(priceFaultText(PriceFault::stopped, {}));
        else if (m_formulas.empty())
            m_message->setText(
                translated(u"The stored AWP of each formula is what its chemicals come to now."_s));
    });
}

void RepricingWindow::store() {
    guarded(u"RepricingWindow:store"_s, [&] {
        std::vector<RepricedFormula> shown;
        for (const int row : m_list->ticked())
            shown.push_back(m_formulas.at(static_cast<std::size_t>(row)));
        switch (storePrices(shown)) {
        case PricesStored::All:
            m_stored = shown.size();
            accept();
            break;
        case PricesStored::ChangedMeanwhile:
            fill();
            m_message->setText(changedText(firstChanged(shown)));
            break;
        case PricesStored::Failed:
            m_message->setText(translated(u"The prices were not stored. Nothing was changed."_s));
        }
    });
}

}  // namespace sorvanto
