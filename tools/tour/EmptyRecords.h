// What is typed into an empty pharmacy: two chemicals, a formula with sixteen steps, a patient.
#pragma once

#include "Visitor.h"

namespace tour {

using namespace Qt::StringLiterals;

struct Chemical {
    QString name, code, units, form, lot, supplier, cost, awp, notes;
};

class EmptyRecords {
public:
    explicit EmptyRecords(Visitor& visitor) : m_visitor(visitor) {}

    void addChemicals();
    void addFormula();
    void addPatient();

    static inline const QString formulaName = u"Sixteen Step Salve"_s;
    static inline const QString lastName = u"Holloway"_s;
    static constexpr int baseQuantity = 100;
    static constexpr int steps = 16;
    /// Settings of a step, counted from 0, in steps of the arrows.
    static constexpr int liftSetting(int step) { return 50 - step; }
    static constexpr int speedSetting(int step) { return 100 + step; }
    static constexpr bool isTimed(int step) { return step < steps - 2; }

private:
    void addChemical(const Chemical& chemical);
    void addIngredient(const QString& chemical, const QString& quantity);
    void typeProgramme();
    void save();

    Visitor& m_visitor;
};

}  // namespace tour
