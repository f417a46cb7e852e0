// A delivery: lot, supplier and price of a chemical that comes again, and the formulas that take it.
#pragma once

#include "records/NewLot.h"

#include <QDialog>
#include <map>

class QLabel;
class QPushButton;

namespace platform {
class NumberBox;
class TextBox;
}  // namespace platform

namespace sorvanto {

class TraceList;
struct Context;

class NewLotWindow : public QDialog {
    Q_OBJECT

public:
    NewLotWindow(const Context& context, clsChemicalPtr former, QWidget* parent = nullptr);

    /// The new record; nothing when none was made.
    clsChemicalPtr added() const { return m_added; }
    /// The formulas that took it, by their keys, with their costs before.
    const std::map<std::int16_t, platform::Currency>& changed() const { return m_changed; }

private:
    void buildWindow();
    QLayout* topRows();
    QLayout* packRow();
    QLayout* bottomRow();
    void fill();
    void listFormulas();
    void showAnew(const ChangedMeanwhile& changed);
    void calculate();
    void takeCost();
    void judge();
    void add();
    /// Why there is nothing to add yet; empty when there is.
    QString problem() const;
    NewLot delivered() const;
    std::vector<std::int16_t> tickedFormulas() const;

    const Context& m_context;
    clsChemicalPtr m_former, m_added;
    std::vector<UsingFormula> m_formulas;
    QStringList m_lots;         ///< that the chemical has already
    QString m_ownCost;          ///< the former lot's, or the last one typed by hand
    bool m_calculated = false;  ///< whether the cost is that of the pack
    std::map<std::int16_t, platform::Currency> m_changed;
    platform::TextBox *m_lot, *m_supplier, *m_packUnit;
    platform::NumberBox *m_packPrice, *m_packSize, *m_cost, *m_awp;
    QLabel *m_calculation, *m_until, *m_message;
    TraceList* m_list;
    QPushButton* m_add;
};

}  // namespace sorvanto
