// Which formulas' prices are not what their chemicals come to now, and by how much; the ticked ones are brought up to
// date together.
#pragma once

#include "records/Repricing.h"

#include <QDialog>
#include <map>

class QLabel;
class QPushButton;

namespace sorvanto {

class TraceList;

class RepricingWindow : public QDialog {
    Q_OBJECT

public:
    /// formerCosts: what formulas cost before a change that is known; may be empty.
    explicit RepricingWindow(std::map<std::int16_t, platform::Currency> formerCosts,
                             QWidget* parent = nullptr);

    /// How many formulas were written.
    std::size_t stored() const { return m_stored; }

private:
    void buildWindow();
    void fill();
    QStringList rowOf(const RepricedFormula& formula) const;
    platform::Currency formerCost(const RepricedFormula& formula) const;
    void store();

    std::map<std::int16_t, platform::Currency> m_formerCosts;
    std::vector<RepricedFormula> m_formulas;  ///< those that change
    std::size_t m_stored = 0;
    TraceList* m_list;
    QLabel *m_note, *m_message;
    QPushButton* m_store;
};

}  // namespace sorvanto
