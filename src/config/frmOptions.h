// The dialog that edits the options: one load from the store, one save to it.
#pragma once

#include "platform/report/PrinterQuestion.h"

#include <QDialog>
#include <QTimer>
#include <cstdint>
#include <memory>

namespace Ui {
class frmOptions;
}

namespace sorvanto {

class clsOptions;
struct Context;

class frmOptions : public QDialog {
    Q_OBJECT
public:
    /// Loads the options into the boxes.
    explicit frmOptions(Context& context, QWidget* parent = nullptr);
    ~frmOptions() override;

    /// Creates the dialog, shows it modally and drops it.
    static void edit(Context& context);

    /// A path cut to fit a box: the start, "...", and the file name with its separator. The result is one
    /// character longer than the limit. Empty, with a report, when the file name leaves no room.
    static QString ShortenString(const QString& text, int limit);

private:
    clsOptions& options() const;
    int storedLanguage() const;
    void Form_Load();
    void transalteForm();  // the misspelt name is the system's own
    void sayWhatCounts();
    void sayWhatIsOpen();
    void ListComPorts();
    void ListPrinters();
    void fillPrinters(const QString& chosen);
    void lookForPrinters();
    void ListCurrency();
    void fillTexts();
    void showLocation(const QString& location);
    /// Says why not.
    bool mayStoreLocation() const;
    void showLanguage(std::int16_t language);
    void storeTexts() const;
    void storeChoices() const;

    void cmdDB_Click();
    void cmdServer_Click();
    void cmdSave_Click();
    void cmdCancel_Click();

    /// Property of txtDB that holds what is saved.
    static constexpr const char* fullLocation = "Tag";

    Context& m_context;
    std::unique_ptr<Ui::frmOptions> m_ui;
    platform::PrinterQuestion m_printers;
    QTimer m_printersLater;
};

}  // namespace sorvanto
