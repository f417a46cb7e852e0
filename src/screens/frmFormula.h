// The formula screen: edits a recipe, its ingredients and its mix programme.
// frmFormula.cpp holds the record, frmFormulaMix.cpp the tab "Mix Options" with type and jar.
#pragma once

#include "platform/xml/XmlDocument.h"
#include "records/clsFormula.h"
#include "screens/BrowsingScreen.h"
#include "screens/ListedTables.h"
#include "screens/RecordFields.h"

#include <memory>

namespace platform {
class StepEntry;
}

namespace Ui {
class frmFormula;
}

namespace sorvanto {

class frmFormula : public BrowsingScreen {
    Q_OBJECT

public:
    explicit frmFormula(Context& context, QWidget* parent = nullptr);
    ~frmFormula() override;

    void Form_Load() override;
    ListedTable listedTable() const override { return listedFormulas(m_context); }
    void getData() override;
    void lockForm() override;
    void unlockForm() override;
    bool saveForm() override;
    void searchFormula(QString searchText);
    void deleteFormula();
    /// Hands the formula to the current formula screen and switches there.
    void makeFormula();
    /// Asks the quantity, then previews the worksheet, or exports it without showing.
    void printFormula(bool exportIt);
    void exportFormula() { printFormula(true); }
    /// Text for the title bar.
    QString formName() const;

    /// The mix programme as the controls stand.
    platform::XmlDocumentPtr makeCustomXML();
    /// The programme to the controls; nothing is tested, the up-downs keep their values.
    void populateMix(const platform::XmlDocumentPtr& document);

protected:
    void openRecord(std::int16_t key) override;
    void search(const QString& searchText) override { searchFormula(searchText); }
    void addRecord() override;
    void dropNewRecord() override { clsFormula().deleteFormula(m_formula, true); }
    void showLinesAnew() override;
    void deleteRecord() override { deleteFormula(); }
    bool fillPastParts(const PastValues& past) override;
    DraftRecord recordOnView() const override;
    void fillForm() override;
    void emptyForm() override;
    void blankRecord() override { m_formula = std::make_shared<clsFormula>(); }

private:
    void translateForm();
    void connectControls();
    void addTools();
    void storeFields();
    void cmdCopy();
    void cmdAdd_Click();
    void cmdRemove_Click();

    // Mix options
    void setUpSteppers();
    bool stepsReadable();
    void translateMix();
    void showStepCount();
    void fillTypeAndJarLists();
    void cbofrm_Type_Click();
    void cbofrm_JarSize_Click();
    void cmdAddMix_Click();
    void cmdDelete_Click();
    void lstCustom_OLEStartDrag();
    void lstCustom_OLEDragDrop(int rowUnderPointer);

    std::unique_ptr<Ui::frmFormula> m_ui;
    clsFormulaPtr m_formula;
    RecordFields<clsFormula> m_fields;
    std::vector<platform::StepEntry*> m_typed;  ///< numbers being typed on the up-downs
    int m_draggedRow = -1;
};

}  // namespace sorvanto
