// The chemical screen: the stock of ingredients, one lot at a time. Starts unlocked.
#pragma once

#include "records/clsChemical.h"
#include "screens/BrowsingScreen.h"
#include "screens/ListedTables.h"
#include "screens/RecordFields.h"

#include <memory>

namespace Ui {
class frmChemical;
}

namespace sorvanto {

class frmChemical : public BrowsingScreen {
    Q_OBJECT

public:
    explicit frmChemical(Context& context, QWidget* parent = nullptr);
    ~frmChemical() override;

    void Form_Load() override;
    ListedTable listedTable() const override { return listedChemicals(); }
    /// Also while it is open from the start and nothing was typed.
    bool canLeaveRecord() const override { return m_locked || (m_neverLocked && !m_new && !hasTypedText()); }
    void lockForm() override;
    bool saveForm() override;
    void searchChemical(const QString& searchText);
    void deleteChemical();
    void editForm() { unlockForm(); }
    void cancelEdit();
    /// Previews the list of all chemicals, or exports it without showing.
    void printChemicals(bool exportIt);
    /// Asks for a supplier's list and shows what its prices would change; refused while something typed isn't saved.
    void importPrices();

protected:
    void openRecord(std::int16_t key) override;
    void search(const QString& searchText) override { searchChemical(searchText); }
    void addRecord() override;
    void dropNewRecord() override { clsChemical().deleteChemical(m_chemical, true); }
    void deleteRecord() override { deleteChemical(); }
    DraftRecord recordOnView() const override;
    void fillForm() override;
    void emptyForm() override;
    void blankRecord() override { m_chemical = std::make_shared<clsChemical>(); }
    void notSaved() override { lockForm(); }
    QString closingNote() const override;

private:
    void translateForm();

    std::unique_ptr<Ui::frmChemical> m_ui;
    clsChemicalPtr m_chemical;
    RecordFields<clsChemical> m_fields;
    bool m_neverLocked = true;
};

}  // namespace sorvanto
