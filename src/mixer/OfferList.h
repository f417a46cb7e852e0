// Mixes that are not in the log: each with its name, quantity and lot, to be logged or put aside.
#pragma once

#include "mixer/MixSession.h"
#include "mixer/PanelTexts.h"

#include <QFrame>

class QVBoxLayout;

namespace sorvanto {

class OfferList : public QFrame {
    Q_OBJECT

public:
    /// Unit of the quantity of an offer; "" when not known.
    using UnitOf = std::function<QString(const Offer&)>;

    explicit OfferList(QWidget* parent = nullptr);
    /// canLog: whether the buttons are on. Hidden when there is nothing on offer.
    void show(const std::vector<Offer>& offers, bool canLog, const UnitOf& unitOf, const PanelTexts& texts);

signals:
    void logAsked(const sorvanto::protocol::MixId& mix);
    void putAsideAsked(const sorvanto::Offer& offer);

private:
    void build(const std::vector<Offer>& offers, const UnitOf& unitOf, const PanelTexts& texts);
    void addOffer(const Offer& offer, const QString& unit, const PanelTexts& texts);

    QVBoxLayout* m_layout;
    QWidget* m_rows = nullptr;
    QStringList m_shown;
};

}  // namespace sorvanto
