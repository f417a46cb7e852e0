// What a text of the trace stands for, and what else it may stand for.
#include "core/TraceList.h"
#include "core/TraceWindow.h"
#include "platform/basic/SystemLocale.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using Found = TraceWindow::Found;

constexpr Found allFound[] = {Found::Chemicals, Found::Batches, Found::Patients, Found::Formulas};
constexpr int mostSimilar = 6;
constexpr qsizetype leastOfName = 2;  // letters; with fewer every patient would be meant

}  // namespace

void TraceWindow::searchAnew() {
    m_asFound = Found::Chemicals;
    m_key = 0;
    lookFrom(Stage::Text);
}

// A text that stands for nothing leaves the lists empty, and says where it was looked for. Who else has that name is looked
// for once the lists stand.
void TraceWindow::findText() {
    const QString text = m_text->text();
    TraceHits hits = m_tracer.find(text);
    leaveIfEnded();
    {
        const QSignalBlocker quiet(m_found);
        m_found->clear();
    }
    m_asked = text;
    m_hits = std::move(hits);
    m_patients.clear();
    m_formulas.clear();
    m_othersKnown = count(m_asFound) + count(Found::Batches) == 0;
    if (m_othersKnown)
        readOthers();
}

void TraceWindow::readOthers() {
    const QString text = m_asked.trimmed();
    if (text.size() < leastOfName)
        return;
    std::vector<TracedPatient> patients = m_tracer.patientsNamed(text);
    std::vector<TracedFormula> formulas = m_tracer.formulasNamed(text);
    leaveIfEnded();
    m_patients = std::move(patients);
    m_formulas = std::move(formulas);
}

void TraceWindow::findOthers() {
    if (m_othersKnown)
        return;
    readOthers();
    m_othersKnown = true;
    if (!m_patients.empty() || !m_formulas.empty())
        showOffers();
}

std::size_t TraceWindow::count(Found found) const {
    switch (found) {
    case Found::Chemicals:
        return m_hits.ingredients.size();
    case Found::Batches:
        return m_hits.batches.size();
    case Found::Patients:
        return m_patients.size();
    case Found::Formulas:
        break;
    }
    return m_formulas.size();
}

/// It is taken for what is wanted, or for the first that there is, where there is none of that.
void TraceWindow::findContents() {
    Found taken = m_asFound;
    if (count(taken) == 0) {
        const auto* first = std::find_if(std::begin(allFound), std::end(allFound),
                                         [this](Found other) { return count(other) > 0; });
        taken = first == std::end(allFound) ? Found::Chemicals : *first;
    }
    std::vector<UsedIngredient> contents;
    for (const TracedBatch& batch : m_hits.batches) {
        if (taken == Found::Batches)
            std::ranges::move(m_tracer.contents(batch.key), std::back_inserter(contents));
    }
    const std::optional<std::size_t> meant = placeOf(taken, std::exchange(m_key, 0));
    leaveIfEnded();
    m_taken = taken;
    m_contents = std::move(contents);
    dropOffers();
    const QSignalBlocker quiet(m_found);
    showFound();
    if (meant)
        m_found->choose(static_cast<int>(*meant));
}

/// Of the record that is meant, where the text stands for more than that.
std::optional<std::size_t> TraceWindow::placeOf(Found taken, std::int64_t key) const {
    if (key == 0 || taken == Found::Batches || count(taken) < 2)
        return std::nullopt;
    if (taken == Found::Chemicals)
        return m_tracer.placeOf(key, m_hits.ingredients);
    const auto in = [&](const auto& records) -> std::optional<std::size_t> {
        const auto place = std::ranges::find(records, key, [](const auto& record) { return record.key; });
        return place == records.end() ? std::nullopt : std::optional<std::size_t>(place - records.begin());
    };
    return taken == Found::Patients ? in(m_patients) : in(m_formulas);
}

/// The similar lots are looked for once for a text.
void TraceWindow::findOffers() {
    if (m_offered)
        return;
    QStringList similar = m_tracer.similarTo(m_asked);
    leaveIfEnded();
    m_similar = std::move(similar);
    showOffers();
}

void TraceWindow::take(Found found) {
    m_asFound = found;
    m_key = 0;
    lookFrom(Stage::Found);
}

// One of the buttons may be clicked just now, so they go later.
void TraceWindow::dropOffers() {
    m_offered = false;
    while (QLayoutItem* item = m_offers->takeAt(0)) {
        if (QWidget* former = item->widget()) {
            former->hide();
            former->setObjectName(QString());
            former->deleteLater();
        }
        delete item;
    }
}

void TraceWindow::showOffers() {
    dropOffers();
    offerSimilar(offerFound(m_to->focusProxy()));
    if (m_offers->count() > 0)  // what is not seen yet counts as well
        m_offers->addStretch();
    m_offered = true;
}

QPushButton* TraceWindow::addOffer(const QString& text, QWidget* before) {
    auto* button = new QPushButton(QString(text).replace(u"&"_s, u"&&"_s), this);
    button->setAutoDefault(false);
    m_offers->addWidget(button);
    setTabOrder(before, button);
    return button;
}

/// A button for each that the text stands for as well. Gives the last one, else the widget before.
QWidget* TraceWindow::offerFound(QWidget* before) {
    const QString captions[] = {translated(u"Chemicals found: %1"_s), translated(u"Batches found: %1"_s),
                                translated(u"Patients found: %1"_s), translated(u"Formulas found: %1"_s)};
    for (const Found found : allFound) {
        if (found == m_taken || count(found) == 0)
            continue;
        const QString number = platform::systemLocale().toString(static_cast<qulonglong>(count(found)));
        QPushButton* button =
            addOffer(QString(captions[static_cast<int>(found)]).replace(u"%1"_s, number), before);
        button->setObjectName(u"cmdFound%1"_s.arg(static_cast<int>(found)));
        connect(button, &QPushButton::clicked, this, [this, found] {
            take(found);
            m_found->setFocus(Qt::TabFocusReason);
        });
        before = button;
    }
    return before;
}

void TraceWindow::offerSimilar(QWidget* before) {
    const QStringList& lots = m_similar;
    if (lots.isEmpty())
        return;
    auto* caption = new QLabel(translated(u"Similar lots:"_s), this);
    platform::setLook(*caption, "quiet");
    m_offers->addWidget(caption);
    for (const QString& lot : lots.mid(0, mostSimilar)) {
        QPushButton* button = addOffer(lot, before);
        connect(button, &QPushButton::clicked, this, [this, lot] {
            m_text->setText(lot);
            searchAnew();
            m_text->setFocus();
        });
        before = button;
    }
    if (lots.size() > mostSimilar) {
        auto* more = new QLabel(u"+ %1"_s.arg(lots.size() - mostSimilar), this);
        more->setToolTip(lots.mid(mostSimilar).join(u'\n'));
        m_offers->addWidget(more);
    }
}

}  // namespace sorvanto
