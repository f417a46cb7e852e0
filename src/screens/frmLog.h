// The log screen: one made batch with its frozen ingredients, mix programme and results. Nearly
// read-only: initials, verifier and notes can be corrected, nothing else.
#pragma once

#include "platform/xml/XmlDocument.h"
#include "records/clsLog.h"
#include "screens/BrowsingScreen.h"
#include "screens/ListedTables.h"
#include "screens/RecordFields.h"
#include "shared/BatchLog.h"

#include <memory>

namespace Ui {
class frmLog;
}

namespace sorvanto {

class RecipeChanges;

class frmLog : public BrowsingScreen, public BatchLog {
    Q_OBJECT

public:
    explicit frmLog(Context& context, QWidget* parent = nullptr);
    ~frmLog() override;

    void Form_Load() override;
    ListedTable listedTable() const override { return listedLogs(); }
    void moveNext() override;
    void movePrevious() override;
    void unlockForm() override;
    bool saveForm() override;
    void searchLog(const QString& searchText);
    bool addLog(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) override;
    bool isLogged(const QString& lot) override;

protected:
    void openRecord(std::int16_t key) override;
    void search(const QString& searchText) override { searchLog(searchText); }
    void deleteRecord() override { deleteLog(); }
    DraftRecord recordOnView() const override;
    void fillForm() override;
    void emptyForm() override;
    void cmdSave() override;
    void cmdDelete() override { deleteLog(); }
    void blankRecord() override { m_log = std::make_shared<clsLog>(); }

private:
    void addTools();
    void translateForm();
    void translateColumns();
    void deleteLog();

    // What is shown of the batch (frmLogShow.cpp)
    void populateMix(const platform::XmlDocumentPtr& document);
    void populateResults(const platform::XmlDocumentPtr& document);

    // Paper and spreadsheet (frmLogPrint.cpp)
    void printLog(bool exportIt);
    void printLabels(bool exportIt);
    void printReport(bool exportIt);
    void printJarReport(bool exportIt);

    std::unique_ptr<Ui::frmLog> m_ui;
    clsLogPtr m_log;
    RecordFields<clsLog> m_fields;
    RecipeChanges* m_recipeChanges;
    platform::RecordsetPtr m_ingredients;  ///< the lines the grid is bound to
};

}  // namespace sorvanto
