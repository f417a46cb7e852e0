// The mixer panel as it is built. It keeps no state of its own: every change shows the session as it stands.
#include "mixer/MixerPanel.h"

#include "mixer/FittingScrollArea.h"
#include "mixer/LinkRow.h"
#include "mixer/NoticeCard.h"
#include "mixer/OfferList.h"
#include "mixer/ProgressRing.h"
#include "mixer/StepsTable.h"
#include "platform/widgets/BarKeys.h"
#include "platform/widgets/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QLabel* centred(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

}  // namespace

MixerPanel::MixerPanel(MixSession& session, const PanelTexts& texts, QWidget* parent)
    : QWidget(parent), m_session(session), m_texts(texts) {
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(platform::grid);
    buildHead(*layout);
    buildButtons(*layout);
    m_footnote = centred("mixerFootnote");
    platform::setLook(*m_footnote, "quiet");
    platform::setLook(*m_footnote, "fine");
    m_account = centred("mixerAccount");
    platform::setLook(*m_account, "fine");
    m_offers = new OfferList;
    m_offers->setObjectName(u"mixerOffers"_s);
    layout->addWidget(m_footnote);
    layout->addSpacing(platform::grid);
    layout->addWidget(m_offers);
    layout->addStretch(1);
    layout->addWidget(m_account);
    m_scroll = new FittingScrollArea;
    m_scroll->setContent(content);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_scroll);
    setMinimumWidth(291);
    connect(m_scroll, &FittingScrollArea::resized, this, &MixerPanel::sizeRing);
    connect(&m_session, &MixSession::changed, this, &MixerPanel::refresh);
    connect(m_offers, &OfferList::logAsked, this,
            [this](const protocol::MixId& mix) { m_session.logOffer(mix); });
    connect(m_offers, &OfferList::putAsideAsked, this, &MixerPanel::putAside);
    refresh();
}

void MixerPanel::buildHead(QBoxLayout& layout) {
    m_title = new QLabel;
    platform::setLook(*m_title, "heading");
    m_link = new LinkRow;
    m_link->setObjectName(u"mixerLink"_s);
    m_ring = new ProgressRing;
    m_ring->setObjectName(u"mixerRing"_s);
    m_name = centred("mixerFormula");
    platform::setLook(*m_name, "heading");
    m_quantity = centred("mixerQuantity");
    m_speeds = centred("mixerSpeeds");
    platform::setLook(*m_speeds, "quiet");
    m_waiting = new NoticeCard;
    m_waiting->setObjectName(u"mixerWaiting"_s);
    m_sign = m_waiting->addButton("mixerSign");
    m_sign->setProperty(platform::BarKeys::firstStop, true);
    connect(m_sign, &QPushButton::clicked, this, [this] { m_session.signNow(); });
    m_problem = new NoticeCard;
    m_problem->setObjectName(u"mixerProblem"_s);
    m_notice = new NoticeCard;
    m_notice->setObjectName(u"mixerNotice"_s);
    m_warnings = new NoticeCard;
    m_warnings->setObjectName(u"mixerWarnings"_s);
    layout.addWidget(m_title);
    layout.addWidget(m_link);
    layout.addSpacing(platform::grid);
    layout.addWidget(m_ring);
    layout.addSpacing(platform::grid);
    for (QLabel* label : {m_name, m_quantity, m_speeds})
        layout.addWidget(label);
    layout.addSpacing(platform::grid);
    for (NoticeCard* card : {m_waiting, m_problem, m_notice, m_warnings})
        layout.addWidget(card);
}

// A table costs a start more than the rest of the panel, and nobody sees it before a formula is loaded.
StepsTable& MixerPanel::steps() {
    if (!m_steps) {
        m_steps = new StepsTable;
        m_steps->setObjectName(u"mixerSteps"_s);
        auto* layout = qobject_cast<QBoxLayout*>(m_footnote->parentWidget()->layout());
        // Up to its own height; what is left then stays empty below.
        layout->insertWidget(layout->indexOf(m_footnote), m_steps, 100);
    }
    return *m_steps;
}

QPushButton* MixerPanel::addButton(QBoxLayout& row, const char* name, void (MixerPanel::*pressed)()) {
    auto* button = new QPushButton;
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, pressed);
    row.addWidget(button);
    return button;
}

void MixerPanel::buildButtons(QBoxLayout& layout) {
    m_buttons = new QWidget;
    auto* row = new QHBoxLayout(m_buttons);
    row->setContentsMargins(0, platform::grid, 0, 0);
    row->setSpacing(12);
    row->addStretch(1);
    m_connect = addButton(*row, "mixerConnect", &MixerPanel::connectPressed);
    m_loadAgain = addButton(*row, "mixerLoadAgain", &MixerPanel::loadAgainPressed);
    m_start = addButton(*row, "mixerStart", &MixerPanel::startPressed);
    m_pause = addButton(*row, "mixerPause", &MixerPanel::pausePressed);
    m_resume = addButton(*row, "mixerResume", &MixerPanel::resumePressed);
    m_stop = addButton(*row, "mixerStop", &MixerPanel::stopPressed);
    m_ok = addButton(*row, "mixerOk", &MixerPanel::okPressed);
    row->addStretch(1);
    platform::setLook(*m_start, "primary");
    platform::setLook(*m_resume, "primary");
    platform::setLook(*m_ok, "primary");
    platform::setLook(*m_stop, "danger");
    layout.addWidget(m_buttons);
    layout.addSpacing(platform::grid);
}

void MixerPanel::setStoreName(const QString& name) { m_title->setToolTip(name); }

void MixerPanel::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), platform::theme().surface); }

}  // namespace sorvanto
