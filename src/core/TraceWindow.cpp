#include "core/TraceWindow.h"

#include "core/TraceList.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Plurals.h"
#include "platform/report/Report.h"
#include "platform/widgets/Theme.h"
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

constexpr int pause = 150;  // milliseconds after a key
constexpr int mostSimilar = 6;
constexpr qsizetype leastOfName = 2;  // letters; with fewer every patient would be meant
constexpr int dateWidth = 100, lotWidth = 120, quantityWidth = 100, initialsWidth = 80, phoneWidth = 120,
              nameWidth = 190, doctorWidth = 140, ndcWidth = 145;

QString dayText(const QDateTime& date) {
    return date.isValid() ? platform::dateText(QDateTime(date.date(), QTime(0, 0), Qt::UTC)) : QString();
}

QString amount(double quantity, const QString& units) {
    const QString number = platform::shownText(quantity, QString());
    return units.isEmpty() ? number : number + u' ' + units;
}

QStringList batchRow(const TracedBatch& batch) {
    const QString how = batch.hasNoLines       ? translated(u"ingredients not known"_s)
                        : batch.base.isEmpty() ? QString()
                                               : translated(u"with %1"_s).replace(u"%1"_s, batch.base);
    return {dayText(batch.date), batch.formula, batch.lot, how, amount(batch.quantity, batch.units),
            batch.initials,      batch.verified};
}

}  // namespace

TraceWindow::TraceWindow(Tracer tracer, const QString& text, QWidget* parent)
    : QDialog(parent), m_tracer(std::move(tracer)), m_text(new QLineEdit(this)), m_similar(new QHBoxLayout),
      m_message(new QLabel(this)), m_found(new TraceList(u"grdFound"_s, this)),
      m_batches(new TraceList(u"grdBatches"_s, this)),
      m_prescriptions(new TraceList(u"grdPrescriptions"_s, this)), m_totals(new QLabel(this)) {
    setObjectName(u"TraceWindow"_s);
    setWindowTitle(translated(u"Where did it go"_s));
    buildWindow();
    m_typing.setSingleShot(true);
    m_typing.setInterval(pause);
    m_typing.callOnTimeout(this, &TraceWindow::search);
    connect(m_text, &QLineEdit::textEdited, &m_typing, qOverload<>(&QTimer::start));
    connect(m_text, &QLineEdit::returnPressed, this, &TraceWindow::search);
    connect(m_found, &TraceList::choiceChanged, this, &TraceWindow::showRecall);
    connect(m_found, &TraceList::opened, this, &TraceWindow::openFound);
    connect(m_batches, &TraceList::choiceChanged, this, &TraceWindow::showPrescriptions);
    connect(m_batches, &TraceList::opened, this, &TraceWindow::openBatch);
    connect(m_prescriptions, &TraceList::opened, this, &TraceWindow::openPrescription);
    m_text->setText(text);
    search();
}

void TraceWindow::buildWindow() {
    m_text->setObjectName(u"txtTrace"_s);
    m_text->setMinimumWidth(40 * grid);
    m_text->setClearButtonEnabled(true);
    auto* caption = new QLabel(translated(u"Lot, NDC, chemical or patient"_s), this);
    platform::setLook(*caption, "quiet");
    caption->setBuddy(m_text);
    m_text->setAccessibleName(caption->text());
    m_message->setObjectName(u"lblNothing"_s);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_totals->setObjectName(u"lblTotals"_s);
    platform::setLook(*m_totals, "heading");
    auto* close = new QPushButton(translated(u"Close"_s), this);
    close->setObjectName(u"cmdClose"_s);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* top = new QHBoxLayout;
    top->setSpacing(2 * grid);
    top->addWidget(caption);
    top->addWidget(m_text);
    top->addLayout(m_similar);
    top->addStretch();
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_totals, 1);
    bottom->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addLayout(top);
    column->addWidget(m_message);
    column->addWidget(m_found, 1);
    column->addWidget(m_batches, 2);
    column->addWidget(m_prescriptions, 3);
    column->addLayout(bottom);
    const QSize room = screen() ? screen()->availableSize() : QSize(130 * grid, 100 * grid);
    resize(std::min(145 * grid, room.width() - 4 * grid), std::min(100 * grid, room.height() - 8 * grid));
}

// A text that stands for nothing leaves the lists empty, and says where it was looked for.
void TraceWindow::search() {
    guarded(u"TraceWindow:search"_s, [&] {
        m_typing.stop();
        const QString text = m_text->text().trimmed();
        m_hits = m_tracer.find(text);
        m_patients.clear();
        if (m_hits.ingredients.empty() && m_hits.batches.empty() && text.size() >= leastOfName)
            m_patients = m_tracer.patientsNamed(text);
        showSimilar();
        showFound();
        showRecall();
    });
}

void TraceWindow::showSimilar() {
    while (QLayoutItem* item = m_similar->takeAt(0)) {
        if (item->widget())
            item->widget()->deleteLater();
        delete item;
    }
    const QStringList lots = m_tracer.similarTo(m_text->text());
    if (lots.isEmpty())
        return;
    auto* caption = new QLabel(translated(u"Similar lots:"_s), this);
    platform::setLook(*caption, "quiet");
    m_similar->addWidget(caption);
    for (const QString& lot : lots.mid(0, mostSimilar)) {
        auto* button = new QPushButton(QString(lot).replace(u"&"_s, u"&&"_s), this);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, lot] {
            m_text->setText(lot);
            search();
            m_text->setFocus();
        });
        m_similar->addWidget(button);
    }
    if (lots.size() > mostSimilar) {
        auto* more = new QLabel(u"+ %1"_s.arg(lots.size() - mostSimilar), this);
        more->setToolTip(lots.mid(mostSimilar).join(u'\n'));
        m_similar->addWidget(more);
    }
}

void TraceWindow::showFound() {
    std::vector<QStringList> rows;
    const QString whichLot = translated(u"Lot"_s);
    if (!m_patients.empty()) {
        m_found->setTitle(translated(u"Patients found"_s), translated(u"choose one"_s));
        m_found->setColumns({{translated(u"Name"_s)},
                             {translated(u"Birthdate"_s), dateWidth},
                             {translated(u"Phone"_s), phoneWidth}});
        for (const TracedPatient& patient : m_patients)
            rows.push_back({patient.name, dayText(patient.born.startOfDay(Qt::UTC)), patient.phone});
    } else if (m_hits.ingredients.empty() && !m_hits.batches.empty()) {
        m_found->setTitle(translated(u"What is in it"_s));
        m_found->setColumns({{translated(u"Name"_s)},
                             {translated(u"NDC"_s), ndcWidth},
                             {whichLot, lotWidth},
                             {translated(u"Quantity"_s), quantityWidth, true},
                             {QString(), quantityWidth},
                             {translated(u"Supplier"_s), doctorWidth}});
        for (const TracedBatch& batch : m_hits.batches) {
            for (const UsedIngredient& line : m_tracer.contents(batch.key)) {
                const Ingredient& in = line.ingredient;
                rows.push_back(
                    {in.name, in.ndc, in.lot, amount(line.quantity, line.units),
                     line.base.isEmpty() ? QString() : translated(u"with %1"_s).replace(u"%1"_s, line.base),
                     in.supplier});
            }
        }
    } else {
        const QString how = m_hits.by == TraceHits::By::Lot    ? translated(u"found by lot"_s)
                            : m_hits.by == TraceHits::By::Ndc  ? translated(u"found by NDC"_s)
                            : m_hits.by == TraceHits::By::Name ? translated(u"found by name"_s)
                                                               : QString();
        m_found->setTitle(translated(u"Chemicals found"_s), how);
        m_found->setColumns({{translated(u"Name"_s)},
                             {translated(u"NDC"_s), ndcWidth},
                             {whichLot, lotWidth},
                             {translated(u"Form"_s), initialsWidth},
                             {translated(u"Supplier"_s), doctorWidth}});
        for (const Ingredient& in : m_hits.ingredients)
            rows.push_back({in.name, in.ndc, in.lot, in.form, in.supplier});
    }
    const QSignalBlocker quiet(m_found);
    m_found->setRows(std::move(rows));
}

/// What leads nowhere is never shown without what was searched.
QString TraceWindow::nothingFound() const {
    QStringList sentences;
    if (!m_text->text().trimmed().isEmpty() && m_recall.batches.empty() && m_found->rowCount() == 0)
        sentences << platform::counted(
            translated(
                u"Nothing has this lot, NDC or name: %1 batch was searched. | Nothing has this lot, NDC or name: "
                "%1 batches were searched."_s),
            m_tracer.searched());
    for (const GivenOffArchive& archive : m_tracer.absentArchives())
        sentences << platform::counted(
                         translated(u"An archive with %1 batch from %2 to %3 is not at hand and was not "
                                    "searched. | An archive with %1 batches from %2 to %3 is not at hand "
                                    "and was not searched."_s),
                         archive.batches)
                         .replace(u"%2"_s, dayText(archive.first.startOfDay(Qt::UTC)))
                         .replace(u"%3"_s, dayText(archive.last.startOfDay(Qt::UTC)));
    return sentences.join(u'\n');
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

Recall TraceWindow::recall() const {
    if (!m_patients.empty()) {
        const std::vector<int> rows = m_found->chosen();
        if (rows.empty() && m_patients.size() > 1)
            return {};
        return m_tracer.dispensedTo(
            m_patients.at(rows.empty() ? 0 : static_cast<std::size_t>(rows.front())).key, {});
    }
    if (m_hits.ingredients.empty() && m_hits.batches.empty())
        return {};
    const QString lot = m_hits.batches.empty() ? QString() : m_hits.batches.front().lot;
    return m_tracer.whereWent(m_hits.ingredients.empty() ? m_hits.ingredients : chosenIngredients(), lot, {});
}

void TraceWindow::showRecall() {
    guarded(u"TraceWindow:showRecall"_s, [&] {
        m_recall = recall();
        const QString message = nothingFound();
        m_message->setText(message);
        m_message->setVisible(!message.isEmpty());
        showBatches();
        showPrescriptions();
        const std::vector<int> chosen = m_found->chosen();
        if (m_hits.ingredients.empty() || (chosen.size() != 1 && m_hits.ingredients.size() != 1))
            return;
        const std::vector<NamedKey> now = m_tracer.formulasWith(chosenIngredients().front());
        m_found->setRemark(platform::counted(translated(u"in %1 formula now | in %1 formulas now"_s),
                                             static_cast<std::int64_t>(now.size())));
    });
}

void TraceWindow::showBatches() {
    m_batches->setTitle(translated(u"Batches"_s), translated(u"choose one to see its prescriptions alone"_s));
    m_batches->setColumns({{translated(u"Date"_s), dateWidth},
                           {translated(u"Formula"_s)},
                           {translated(u"Lot"_s), lotWidth},
                           {QString(), lotWidth},
                           {translated(u"Quantity"_s), quantityWidth, true},
                           {translated(u"Logged"_s), initialsWidth},
                           {translated(u"Verified"_s), initialsWidth}});
    std::vector<QStringList> rows;
    for (const auto& part : {m_recall.batches, m_recall.uncertain}) {
        for (const TracedBatch& batch : part)
            rows.push_back(batchRow(batch));
    }
    const QSignalBlocker quiet(m_batches);
    m_batches->setRows(std::move(rows), static_cast<int>(m_recall.uncertain.size()));
}

void TraceWindow::showPrescriptions() {
    std::set<TraceKey> wanted;
    for (const int row : m_batches->chosen()) {
        if (row < static_cast<int>(m_recall.batches.size()))
            wanted.insert(m_recall.batches[static_cast<std::size_t>(row)].key);
    }
    m_shown.clear();
    std::vector<QStringList> rows;
    for (const TracedPrescription& one : m_recall.prescriptions) {
        if (!wanted.empty() && !wanted.contains(one.batch))
            continue;
        m_shown.push_back(one);
        rows.push_back({one.patientName, one.phone, one.drug, amount(one.quantity, one.units),
                        dayText(one.date), one.batchLot, one.doctor});
    }
    const auto batches = static_cast<std::int64_t>(wanted.empty() ? m_recall.batches.size() : wanted.size());
    m_prescriptions->setTitle(translated(u"Prescriptions"_s),
                              platform::counted(translated(u"of %1 batch | of %1 batches"_s), batches));
    m_prescriptions->setColumns({{translated(u"Patient"_s), nameWidth},
                                 {translated(u"Phone"_s), phoneWidth},
                                 {translated(u"Drug Name"_s)},
                                 {translated(u"Quantity"_s), quantityWidth, true},
                                 {translated(u"Date"_s), dateWidth},
                                 {translated(u"Lot"_s), lotWidth},
                                 {translated(u"Doctor"_s), doctorWidth}});
    m_prescriptions->setRows(std::move(rows));
    showTotals();
}

void TraceWindow::showTotals() {
    const auto part = [](const QString& forms, std::size_t count) {
        return platform::counted(translated(forms), static_cast<std::int64_t>(count));
    };
    QStringList parts{part(u"%1 batch | %1 batches"_s, m_recall.batches.size()),
                      part(u"%1 prescription | %1 prescriptions"_s, m_recall.prescriptions.size()),
                      part(u"%1 patient | %1 patients"_s, static_cast<std::size_t>(m_recall.patients))};
    if (!m_recall.uncertain.empty())
        parts << part(
            u"%1 batch whose ingredients are not known | %1 batches whose ingredients are not known"_s,
            m_recall.uncertain.size());
    m_totals->setText(parts.join(u" · "_s));
}

void TraceWindow::openFound(int row) {
    const auto place = static_cast<std::size_t>(row);
    if (!m_patients.empty())
        open(patients, {0, m_patients.at(place).key});
    else if (!m_hits.ingredients.empty())
        open(chemicals, {0, m_tracer.chemicalOf(m_hits.ingredients.at(place))});
}

void TraceWindow::openBatch(int row) {
    const auto place = static_cast<std::size_t>(row);
    const std::size_t certain = m_recall.batches.size();
    open(logs, place < certain ? m_recall.batches[place].key : m_recall.uncertain.at(place - certain).key);
}

void TraceWindow::openPrescription(int row) {
    open(patients, m_shown.at(static_cast<std::size_t>(row)).patient);
}

// What lies in an archive, or is no more, has no record to open.
void TraceWindow::open(ScreenNumber screen, TraceKey key) {
    if (key.file != 0 || key.key == 0) {
        m_message->setText(
            key.file != 0 ? translated(u"This batch lies in an archive: open that file to see its record."_s)
                          : translated(u"This chemical is not among the chemicals any more."_s));
        m_message->show();
        return;
    }
    m_wanted = {screen, key.key};
    accept();
}

}  // namespace sorvanto
