// The list from which the user picks one of several records. Lives for one choice, so that it begins
// without one every time, and a search inside a search has a list of its own.
#pragma once

#include "platform/data/Recordset.h"
#include "platform/widgets/RecordGrid.h"
#include "records/SearchColumns.h"

#include <QDialog>
#include <QVariant>
#include <memory>
#include <vector>

namespace Ui {
class frmSearchRS;
}

namespace sorvanto {

class ListTypeAhead;

class frmSearchRS : public QDialog {
    Q_OBJECT

public:
    explicit frmSearchRS(QWidget* parent = nullptr);
    ~frmSearchRS() override;

    /// Shows the rows, the key in the first column hidden; the columns come with setColumns.
    void setRows(const platform::RecordsetPtr& rows);
    void setColumns(std::vector<platform::GridColumn> columns);
    ListMeasure measure() const;
    /// As wide as the columns need, up to the screen; where that is too narrow, they get narrower, so that all
    /// are seen.
    void fit();

    bool Succeed() const { return m_succeed; }
    /// The key chosen; invalid before a choice.
    QVariant ID() const { return m_id; }

public slots:
    void cmdOK_Click();
    void cmdCancel_Click();
    void TDBList1_DblClick();
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    bool takeKey(QKeyEvent& key);
    std::vector<int> neededWidths() const;
    /// The row selected, -1 when there is none.
    int currentRow() const;
    void goToRow(int row);
    void showPosition();

    std::unique_ptr<Ui::frmSearchRS> m_ui;
    ListTypeAhead* m_typeAhead;
    platform::RecordsetPtr m_rows;
    QVariant m_id;
    bool m_succeed = false;
};

}  // namespace sorvanto
