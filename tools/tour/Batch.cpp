// From the question for the quantity to the initials.
#include "Batch.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QTest>

namespace tour {
namespace {

// In milliseconds, for a simulator that runs fast.
constexpr int longestMix = 180'000;
constexpr int intoTheMix = 600;

}  // namespace

Batch::Batch(Visitor& visitor, QString formula, int quantity)
    : m_visitor(visitor), m_formula(std::move(formula)), m_quantity(quantity) {
    m_signing = [this](QWidget& dialog) { sign(dialog, compounder, verifier); };
}

void Batch::announceQuantity() {
    m_visitor.robot().expectDialog("frmMake", [this](QWidget& dialog) {
        auto& worksheet = Visitor::find<QCheckBox>(dialog, "chkPrint");
        if (worksheet.isChecked())
            Visitor::click(worksheet);
        Visitor::type(Visitor::find<QWidget>(dialog, "txtQTY"), QString::number(m_quantity));
        m_visitor.picture("quantity", &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, "OKButton"));
    });
}

void Batch::load() {
    Visitor& visitor = m_visitor;
    requireSame("the current formula", visitor.find<QLineEdit>("txtfrm_Name").text(), m_formula);
    visitor.wait(
        "the formula on the mixer", [&] { return visitor.find<QAbstractButton>("mixerStart").isEnabled(); },
        30'000);
    requireSame("the mixer's formula", visitor.find<QLabel>("mixerFormula").text(), m_formula);
    visitor.picture("formula-on-the-mixer");
}

void Batch::mixForLater() {
    load();
    m_visitor.click("mixerStart");
    m_visitor.wait(
        "the batch that is kept",
        [&] {
            const auto* offer = m_visitor.window().findChild<QLabel*>("mixerOffer");
            return offer && offer->isVisible() && offer->text().contains(m_formula);
        },
        longestMix);
    m_visitor.settle();
    m_visitor.picture("kept");
}

void Batch::mix() {
    load();
    Visitor& visitor = m_visitor;
    bool asked = false;
    visitor.robot().expectDialog("frmInitials", [&](QWidget& dialog) {
        asked = true;
        m_signing(dialog);
    });
    visitor.click("mixerStart");
    const auto* pause = visitor.window().findChild<QAbstractButton*>("mixerPause");
    visitor.wait(
        "the running mix", [&] { return asked || (pause && pause->isVisible()); }, 30'000);
    // A moment into the mix, so that the ring has moved.
    if (!QTest::qWaitFor([&] { return asked; }, intoTheMix))
        visitor.picture("mixing");
    visitor.wait(
        "the end of the mix", [&] { return asked; }, longestMix);
    visitor.settle();
}

void Batch::typeInitials(Visitor& visitor, QWidget& dialog, const QString& box, const QString& initials) {
    auto& field = Visitor::find<QLineEdit>(dialog, box);
    visitor.wait("the typed initials", [&] {
        Visitor::type(field, initials);
        return field.text() == initials;
    });
}

void Batch::sign(QWidget& dialog, const QString& first, const QString& second) {
    requireSame("the formula to sign", Visitor::find<QLineEdit>(dialog, "txtfrm_Name").text(), m_formula);
    typeInitials(m_visitor, dialog, "txtInitials", first);
    typeInitials(m_visitor, dialog, "txtVerified", second);
    m_visitor.picture("initials", &dialog);
    Visitor::click(Visitor::find<QWidget>(dialog, "cmdOK"));
}

void Batch::requireFormulas() const {
    require(m_visitor.find<QAbstractButton>("cmdFormulas").isChecked(),
            "the program did not come back to the formulas after the mix.");
}

}  // namespace tour
