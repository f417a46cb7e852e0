// One batch as a user makes it: the quantity, the mix on the panel, the initials.
#pragma once

#include "Visitor.h"

#include <functional>

namespace tour {

using namespace Qt::StringLiterals;

class Batch {
public:
    Batch(Visitor& visitor, QString formula, int quantity);

    /// Announces the question for the quantity; the worksheet is not wanted.
    void announceQuantity();
    /// Waits until the mixer has the formula, presses Start and waits for the dialog of the initials.
    void mix();
    /// The same where only a copy of the records is open: waits until the panel says that the batch is kept.
    void mixForLater();
    /// What the initials' dialog gets; without it compounder and verifier are typed and OK is pressed.
    void setSigning(Robot::Script signing) { m_signing = std::move(signing); }
    /// The dialog of the initials: pictures it, types both, presses OK.
    void sign(QWidget& dialog, const QString& compounder, const QString& verifier);
    /// The dialog takes no keys in its first moment: typed until they are taken.
    static void typeInitials(Visitor& visitor, QWidget& dialog, const QString& box, const QString& initials);
    /// Requires the program to be back on the formulas.
    void requireFormulas() const;

    static inline const QString compounder = u"MR"_s;
    static inline const QString verifier = u"JT"_s;

private:
    void load();

    Visitor& m_visitor;
    QString m_formula;
    int m_quantity;
    Robot::Script m_signing;
};

}  // namespace tour
