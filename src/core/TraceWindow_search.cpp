// What a text of the trace stands for, and what else it may stand for.
#include "core/TraceList.h"
#include "core/TraceWindow.h"
#include "platform/basic/SystemLocale.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/UnderWay.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using Found = TraceWindow::Found;

constexpr Found allFound[] = {Found::Chemicals, Found::Batches, Found::Patients, Found::Formulas};
constexpr int mostSimilar = 6;
constexpr qsizetype leastOfName = 2;  // letters; with fewer every patient would be meant

}  // namespace

// A text that stands for nothing leaves the lists empty, and says where it was looked for. Who else has that name is looked
// for once the lists stand.
void TraceWindow::search(Found wanted) {
    guarded(u"TraceWindow:search"_s, [&] {
        m_typing.stop();
        const QString text = m_text->text();
        m_hits = m_tracer.find(text);
        m_patients.clear();
        m_formulas.clear();
        const bool later = count(wanted) + count(Found::Batches) > 0;
        if (!later)
            findOthers();
        take(wanted);
        if (later)
            platform::whenIdle(*this, [this, text] { offerOthers(text); });
    });
}

void TraceWindow::offerOthers(const QString& text) {
    guarded(u"TraceWindow:search"_s, [&] {
        if (m_text->text() != text)
            return;
        findOthers();
        if (!m_patients.empty() || !m_formulas.empty())
            showOffers();
    });
}

void TraceWindow::findOthers() {
    const QString text = m_text->text().trimmed();
    if (text.size() < leastOfName)
        return;
    m_patients = m_tracer.patientsNamed(text);
    m_formulas = m_tracer.formulasNamed(text);
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

/// Or for the first that there is, where there is none of that.
void TraceWindow::take(Found found) {
    m_taken = found;
    if (count(found) == 0) {
        const auto* first = std::find_if(std::begin(allFound), std::end(allFound),
                                         [this](Found other) { return count(other) > 0; });
        m_taken = first == std::end(allFound) ? Found::Chemicals : *first;
    }
    showOffers();
    showFound();
    showRecall();
}

// Where the text stands for more than the record that it was taken from.
void TraceWindow::choose(std::int64_t key) {
    if (key == 0 || m_found->rowCount() < 2)
        return;
    const auto keyAt = [&](std::size_t place) -> std::int64_t {
        switch (m_taken) {
        case Found::Chemicals:
            return m_tracer.chemicalOf(m_hits.ingredients.at(place));
        case Found::Patients:
            return m_patients.at(place).key;
        case Found::Formulas:
            return m_formulas.at(place).key;
        case Found::Batches:
            break;
        }
        return 0;
    };
    for (int row = 0; row < m_found->rowCount(); ++row) {
        if (keyAt(static_cast<std::size_t>(row)) == key)
            return m_found->choose(row);
    }
}

// One of the buttons may be clicked just now, so they go later.
void TraceWindow::showOffers() {
    while (QLayoutItem* item = m_offers->takeAt(0)) {
        if (QWidget* former = item->widget()) {
            former->hide();
            former->setObjectName(QString());
            former->deleteLater();
        }
        delete item;
    }
    offerSimilar(offerFound(m_to->focusProxy()));
    if (m_offers->count() > 0)  // what is not seen yet counts as well
        m_offers->addStretch();
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
            guarded(u"TraceWindow:search"_s, [&] {
                take(found);
                m_found->setFocus(Qt::TabFocusReason);
            });
        });
        before = button;
    }
    return before;
}

void TraceWindow::offerSimilar(QWidget* before) {
    const QStringList lots = m_tracer.similarTo(m_text->text());
    if (lots.isEmpty())
        return;
    auto* caption = new QLabel(translated(u"Similar lots:"_s), this);
    platform::setLook(*caption, "quiet");
    m_offers->addWidget(caption);
    for (const QString& lot : lots.mid(0, mostSimilar)) {
        QPushButton* button = addOffer(lot, before);
        connect(button, &QPushButton::clicked, this, [this, lot] {
            m_text->setText(lot);
            search();
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
