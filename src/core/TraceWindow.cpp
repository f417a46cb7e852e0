#include "core/TraceWindow.h"

#include "core/TraceList.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Plurals.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Caption.h"
#include "platform/widgets/SearchBox.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/WorkLine.h"
#include "reports/RecallTexts.h"
#include "reports/ReportFlow.h"
#include "reports/rptRecall.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;

constexpr int pause = 150;      // milliseconds after a key
constexpr int mostTyped = 100;  // letters; the longest lots and names have fewer
constexpr int periodBoxWidth = 130;

}  // namespace

TraceWindow::TraceWindow(Context& context, Tracer tracer, const Start& start, QWidget* parent)
    : QDialog(parent), m_context(context), m_tracer(std::move(tracer)), m_asFound(start.found),
      m_key(start.key), m_text(new QLineEdit(this)), m_from(new platform::DateBox(this)),
      m_to(new platform::DateBox(this)), m_offers(new QHBoxLayout), m_message(new QLabel(this)),
      m_found(new TraceList(u"grdFound"_s, this)), m_usedIn(new TraceList(u"grdFormulas"_s, this)),
      m_batches(new TraceList(u"grdBatches"_s, this)),
      m_prescriptions(new TraceList(u"grdPrescriptions"_s, this)), m_totals(new QLabel(this)),
      m_line(new platform::WorkLine(this)), m_print(new QPushButton(translated(u"Print"_s), this)),
      m_export(new QPushButton(translated(u"Export"_s), this)) {
    setObjectName(u"TraceWindow"_s);
    setWindowTitle(translated(u"Where did it go"_s));
    buildWindow();
    m_typing.setSingleShot(true);
    m_typing.setInterval(pause);
    m_typing.callOnTimeout(this, &TraceWindow::searchAnew);
    connect(m_text, &QLineEdit::textEdited, this, &TraceWindow::takeEdit);
    connect(m_text, &QLineEdit::returnPressed, this, &TraceWindow::searchAnew);
    connect(m_found, &TraceList::choiceChanged, this, [this] { lookFrom(Stage::Recall); });
    connect(m_found, &TraceList::opened, this, &TraceWindow::openFound);
    connect(m_usedIn, &TraceList::opened, this, &TraceWindow::openFormula);
    connect(m_batches, &TraceList::choiceChanged, this, &TraceWindow::showPrescriptions);
    connect(m_batches, &TraceList::opened, this, &TraceWindow::openBatch);
    connect(m_prescriptions, &TraceList::opened, this, &TraceWindow::openPrescription);
    for (platform::DateBox* box : {m_from, m_to})
        connect(box, &platform::DateBox::valueEdited, this, [this] { lookFrom(Stage::Recall); });
    connect(m_print, &QPushButton::clicked, this, &TraceWindow::print);
    connect(m_export, &QPushButton::clicked, this, &TraceWindow::exportList);
    m_text->setText(start.text);
    m_text->selectAll();  // another one is typed over it
    enableOutput(false);
}

void TraceWindow::buildWindow() {
    m_message->setObjectName(u"lblNothing"_s);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addLayout(topRow());
    column->addLayout(m_offers);
    column->addWidget(m_message);
    column->addLayout(foundRow(), 1);
    column->addWidget(m_batches, 2);
    column->addWidget(m_prescriptions, 3);
    column->addLayout(bottomRow());
    platform::giveAccessKeys(*this);
    const QSize room = screen() ? screen()->availableSize() : QSize(130 * grid, 100 * grid);
    resize(std::min(145 * grid, room.width() - 4 * grid), std::min(100 * grid, room.height() - 8 * grid));
}

QLayout* TraceWindow::topRow() {
    m_text->setObjectName(u"txtTrace"_s);
    m_text->setMinimumWidth(36 * grid);
    m_text->setMaxLength(mostTyped);
    platform::addClearButton(*m_text);
    m_from->setObjectName(u"txtFrom"_s);
    m_to->setObjectName(u"txtTo"_s);
    auto* top = new QHBoxLayout;
    top->setSpacing(2 * grid);
    top->addWidget(platform::captionFor(*m_text, translated(u"Lot, NDC, chemical, formula or patient"_s)));
    top->addWidget(m_text);
    top->addStretch();
    for (const auto& [box, text] :
         {std::pair(m_from, translated(u"From"_s)), std::pair(m_to, translated(u"To"_s))}) {
        box->setFixedWidth(periodBoxWidth);
        top->addWidget(platform::captionFor(*box, text));
        top->addWidget(box);
    }
    return top;
}

/// What was found, and the formulas that use it now.
QLayout* TraceWindow::foundRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * grid);
    row->addWidget(m_found, 3);
    row->addWidget(m_usedIn, 1);
    return row;
}

QLayout* TraceWindow::bottomRow() {
    m_totals->setObjectName(u"lblTotals"_s);
    platform::setLook(*m_totals, "heading");
    m_totals->setWordWrap(true);  // however long, the window stays as wide as it is
    m_print->setObjectName(u"cmdPrint"_s);
    platform::setLook(*m_print, "primary");
    m_export->setObjectName(u"cmdExport"_s);
    auto* close = new QPushButton(translated(u"Close"_s), this);
    close->setObjectName(u"cmdClose"_s);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_totals, 1);
    bottom->addWidget(m_line);
    for (QPushButton* button : {m_print, m_export, close}) {
        button->setAutoDefault(false);
        bottom->addWidget(button);
    }
    return bottom;
}

std::vector<Ingredient> TraceWindow::chosenIngredients() const {
    const std::vector<int> rows = m_found->chosen();
    if (rows.empty())
        return m_hits.ingredients;
    std::vector<Ingredient> chosen;
    for (const int row : rows)
        chosen.push_back(m_hits.ingredients.at(static_cast<std::size_t>(row)));
    return chosen;
}

TraceDays TraceWindow::days() const {
    const auto day = [](const platform::DateBox& box) {
        return box.value() == platform::zeroDate() ? QDate() : box.value().date();
    };
    return {day(*m_from), day(*m_to)};
}

RecallList TraceWindow::list() const {
    const auto chosenOf = [&](const auto& records) {
        const std::vector<int> rows = m_found->chosen();
        if (rows.empty() && records.size() > 1)
            return RecallList();
        return recallList(m_tracer, records.at(rows.empty() ? 0 : static_cast<std::size_t>(rows.front())),
                          days());
    };
    if (m_taken == Found::Patients)
        return chosenOf(m_patients);
    if (m_taken == Found::Formulas)
        return chosenOf(m_formulas);
    TraceHits hits = m_hits;
    if (m_taken == Found::Batches) {
        hits.by = TraceHits::By::Batch;
        hits.ingredients.clear();
    } else if (!hits.ingredients.empty()) {
        hits.ingredients = chosenIngredients();
    }
    return recallList(m_tracer, m_asked, hits, days());
}

/// What leads nowhere is never shown without what was searched.
QString TraceWindow::message() const {
    QStringList sentences;
    const bool nothing = !m_list.asked.isEmpty() && m_list.recall.batches.empty();
    if (nothing && m_found->rowCount() == 0)
        sentences << recallNothing(m_list.searched);
    else if (nothing && !m_list.ingredients.empty() && m_list.recall.hiddenBatches == 0)
        sentences << recallNoBatch(m_list.searched);
    else if (nothing && m_list.formula && m_list.recall.hiddenBatches == 0)
        sentences << recallNotMade(m_list.searched);
    else if (nothing && m_list.patient && m_list.recall.hiddenPrescriptions == 0)
        sentences << recallNotDispensed(m_list.searched);
    RecallList open;  // without what is uncertain: the totals have it
    open.absent = m_tracer.absentArchives();
    open.recall.hiddenBatches = m_list.recall.hiddenBatches;
    open.recall.hiddenPrescriptions = m_list.recall.hiddenPrescriptions;
    return (sentences + recallGaps(open)).join(u'\n');
}

void TraceWindow::say(const QString& text) {
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

void TraceWindow::enableOutput(bool enabled) {
    for (QPushButton* button : {m_print, m_export})
        button->setEnabled(enabled);
}

// What leaves the window knows of all batches that lack lines.
void TraceWindow::print() {
    whenComplete([this] {
        guarded(u"TraceWindow:print"_s, [&] {
            auto report = std::make_unique<rptRecall>(m_context, m_list);
            report->printerName = defaultPrinter(m_context);
            runReport(std::move(report), false, QString());
        });
    });
}

void TraceWindow::exportList() {
    whenComplete([this] { guarded(u"TraceWindow:export"_s, [&] { say(exportRecall(m_list)); }); });
}

}  // namespace sorvanto
