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
    m_visitor.robot().expectDialog(QStringLiteral("frmMake"), [this](QWidget& dialog) {
        auto& worksheet = Visitor::find<QCheckBox>(dialog, QStringLiteral("chkPrint"));
        if (worksheet.isChecked())
            Visitor::click(worksheet);
        Visitor::type(Visitor::find<QWidget>(dialog, QStringLiteral("txtQTY")), QString::number(m_quantity));
        m_visitor.picture(QStringLiteral("quantity"), &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, QStringLiteral("OKButton")));
    });
}

void Batch::mix() {
    Visitor& visitor = m_visitor;
    requireSame(QStringLiteral("the current formula"),
                visitor.find<QLineEdit>(QStringLiteral("txtfrm_Name")).text(), m_formula);
    visitor.wait(QStringLiteral("the formula on the mixer"), [&] {
        return visitor.find<QAbstractButton>(QStringLiteral("mixerStart")).isEnabled();
    }, 30'000);
    requireSame(QStringLiteral("the mixer's formula"), visitor.find<QLabel>(QStringLiteral("mixerFormula")).text(), m_formula);
    visitor.picture(QStringLiteral("formula-on-the-mixer"));

    bool asked = false;
    visitor.robot().expectDialog(QStringLiteral("frmInitials"), [&](QWidget& dialog) {
        asked = true;
        m_signing(dialog);
    });
    visitor.click(QStringLiteral("mixerStart"));
    const auto* pause = visitor.window().findChild<QAbstractButton*>(QStringLiteral("mixerPause"));
    visitor.wait(QStringLiteral("the running mix"), [&] { return asked || (pause && pause->isVisible()); }, 30'000);
    // A moment into the mix, so that the ring has moved.
    if (!QTest::qWaitFor([&] { return asked; }, intoTheMix))
        visitor.picture(QStringLiteral("mixing"));
    visitor.wait(QStringLiteral("the end of the mix"), [&] { return asked; }, longestMix);
    visitor.settle();
}

void Batch::sign(QWidget& dialog, const QString& first, const QString& second) {
    requireSame(QStringLiteral("the formula to sign"),
                Visitor::find<QLineEdit>(dialog, QStringLiteral("txtfrm_Name")).text(), m_formula);
    Visitor::type(Visitor::find<QWidget>(dialog, QStringLiteral("txtInitials")), first);
    Visitor::type(Visitor::find<QWidget>(dialog, QStringLiteral("txtVerified")), second);
    m_visitor.picture(QStringLiteral("initials"), &dialog);
    Visitor::click(Visitor::find<QWidget>(dialog, QStringLiteral("cmdOK")));
}

void Batch::requireFormulas() const {
    require(m_visitor.find<QAbstractButton>(QStringLiteral("cmdFormulas")).isChecked(),
            QStringLiteral("the program did not come back to the formulas after the mix."));
}

}  // namespace tour
