// The dialog in which a batch is signed, as the log record sees it; the mixing layer supplies it.
#pragma once

#include "platform/xml/XmlDocument.h"
#include "records/clsFormula.h"

#include <QString>
#include <functional>
#include <memory>

namespace sorvanto {

class SigningDialog {
public:
    virtual ~SigningDialog() = default;
    /// Takes the formula document and builds the scaled formula from it.
    virtual void setFormula(const platform::XmlDocumentPtr& document) = 0;
    virtual void log_Lot(const QString& lot) = 0;
    /// Takes the results document, to show what became of the mix beside what was planned.
    virtual void setResults(const platform::XmlDocumentPtr&) {}
    virtual void showModal() = 0;
    /// The formula to log, or nothing when cancelled or without a key.
    virtual clsFormulaPtr getFormula() = 0;
    virtual QString initials() const = 0;
    virtual QString verified() const = 0;
};

/// Makes the dialog; set at start by the mixing layer.
extern std::function<std::unique_ptr<SigningDialog>()> makeSigningDialog;

}  // namespace sorvanto
