// The list of mixes that still want a decision.
#include "mixer/OfferList.h"

#include "mixer/BatchPassport.h"
#include "platform/widgets/Theme.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString describe(const Offer& offer, const QString& unit, const PanelTexts& texts) {
    BatchPassport batch = BatchPassport::of(offer.formula, unit);
    if (batch.name.isEmpty())
        batch.name = texts(PanelText::Unnamed);
    batch.lot = offer.lot;
    const QString line = batch.line({texts(PanelText::AmountInJar), texts(PanelText::LotNumber)});
    switch (offer.state) {
    case JournalState::Finished:
        if (offer.otherDatabase)
            return texts(PanelText::OfferOtherDatabase, {line});
        return offer.waitsForServer ? texts(PanelText::OfferForServer, {line}) : line;
    case JournalState::Started:
        return texts(PanelText::OfferWaiting, {line, offer.serial});
    default:
        return texts(PanelText::OfferNoResults, {line});
    }
}

bool canBeLogged(const Offer& offer) {
    return offer.state == JournalState::Finished && !offer.otherDatabase && !offer.waitsForServer;
}

QPushButton* smallButton(const QString& caption, const char* name) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    return button;
}

}  // namespace

OfferList::OfferList(QWidget* parent) : QFrame(parent), m_layout(new QVBoxLayout(this)) {
    platform::makeCard(*this);
    m_layout->setContentsMargins(12, 10, 12, 12);
    m_layout->setSpacing(platform::grid);
    hide();
}

void OfferList::show(const std::vector<Offer>& offers, bool canLog, const UnitOf& unitOf,
                     const PanelTexts& texts) {
    QStringList shown;
    for (const Offer& offer : offers)
        shown << QString::fromLatin1(offer.mix) + QString::number(static_cast<int>(offer.state)) +
                     (canBeLogged(offer)    ? '+'_L1
                      : offer.otherDatabase ? '-'_L1
                                            : '.'_L1) +
                     unitOf(offer);
    if (shown != m_shown) {
        m_shown = shown;
        build(offers, unitOf, texts);
    }
    setVisible(!offers.empty());
    for (QPushButton* button : findChildren<QPushButton*>(u"mixerLogMix"_s))
        button->setEnabled(canLog);
}

void OfferList::build(const std::vector<Offer>& offers, const UnitOf& unitOf, const PanelTexts& texts) {
    // The click that changed the list may still be inside one of its buttons.
    if (m_rows) {
        m_rows->hide();
        m_rows->setParent(nullptr);
        m_rows->deleteLater();
    }
    m_rows = new QWidget(this);
    auto* rows = new QVBoxLayout(m_rows);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(platform::grid);
    m_layout->addWidget(m_rows);
    auto* heading = new QLabel(texts(PanelText::OffersHeading));
    platform::setLook(*heading, "heading");
    rows->addWidget(heading);
    for (const Offer& offer : offers)
        addOffer(offer, unitOf(offer), texts);
}

void OfferList::addOffer(const Offer& offer, const QString& unit, const PanelTexts& texts) {
    auto* text = new QLabel(describe(offer, unit, texts));
    text->setObjectName(u"mixerOffer"_s);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    // One below the other: in most languages the two don't fit beside each other, and the final one is
    // not to be hit in place of the other.
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(platform::grid);
    if (canBeLogged(offer)) {
        auto* log = smallButton(texts(PanelText::LogThisMix), "mixerLogMix");
        connect(log, &QPushButton::clicked, this, [this, mix = offer.mix] { emit logAsked(mix); });
        buttons->addWidget(log, 0, Qt::AlignLeft);
    }
    auto* aside = smallButton(texts(PanelText::PutAside), "mixerPutAside");
    connect(aside, &QPushButton::clicked, this, [this, offer] { emit putAsideAsked(offer); });
    buttons->addWidget(aside, 0, Qt::AlignLeft);
    auto* rows = static_cast<QVBoxLayout*>(m_rows->layout());
    rows->addWidget(text);
    rows->addLayout(buttons);
}

}  // namespace sorvanto
