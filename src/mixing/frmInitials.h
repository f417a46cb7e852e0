// The dialog in which compounder and verifier sign a batch. It rebuilds the scaled formula from the
// document that the mixer ran, or asks which formula an unnamed mix was. Lives for one log entry.
#pragma once

#include "platform/widgets/ModalForm.h"
#include "records/SigningDialog.h"

#include <memory>

namespace Ui {
class frmInitials;
}

class QAction;

namespace sorvanto {

class MixSummaryCard;
struct Context;

class frmInitials : public platform::ModalForm, public SigningDialog {
    Q_OBJECT

public:
    explicit frmInitials(Context& context, QWidget* parent = nullptr);
    ~frmInitials() override;

    /// Makes these dialogs the ones that clsLog::addLog shows.
    static void install(Context& context);

    void setFormula(const platform::XmlDocumentPtr& document) override;
    void log_Lot(const QString& lot) override;
    void setResults(const platform::XmlDocumentPtr& document) override;
    void showModal() override { ModalForm::showModal(); }
    clsFormulaPtr getFormula() override;
    QString initials() const override;
    QString verified() const override;

protected:
    void onActivate() override;
    void onCloseBox() override { cmdCancel_Click(); }

private:
    void Form_Load();
    void makeFormula();
    void nameEntered();
    void cmdOK_Click();
    void cmdCancel_Click();
    void openLoggedFormula(std::int16_t formulaID);
    void showBatch();
    void showSameInitials();
    void takeProgramme(clsFormula& formula) const;
    void setNameWritable(bool writable);

    Context& m_context;
    std::unique_ptr<Ui::frmInitials> m_ui;
    MixSummaryCard* m_card;
    QAction* m_same;  ///< the mark in the box of the verifier
    platform::XmlDocumentPtr m_document;
    clsFormulaPtr m_formula;
    bool m_cancelled = false;
};

}  // namespace sorvanto
