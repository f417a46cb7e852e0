// A way through the program on the sample pharmacy in which every window comes up: screens with their tabs,
// dialogs, questions, refusals, reports with their previews, error reports. It goes by names of controls
// alone, so that it is the same in each language.
#pragma once

#include "LanguageFile.h"
#include "TourAsker.h"
#include "screens/ScreenTest.h"

#include <QPushButton>
#include <QTabWidget>

namespace languages {

class LanguageTour : public ScreenTest {
protected:
    void SetUp() override;
    void TearDown() override;
    void seed() override;
    QByteArray optionsXml() const override;

    /// Number of the language in which the program starts.
    virtual int language() const = 0;
    /// Whether the delivered file lies beside the program, or none.
    virtual bool hasFile() const { return true; }
    /// Called for each window on show, and for each state of the main window.
    virtual void look(QWidget& window, const QString& name) = 0;

    /// The whole way.
    void tour();

private:
    void formulaScreen();
    void formulaMessages();
    void ingredientMessages();
    void mixMessages();
    void makeAndCurrent();
    void chemicalScreen();
    void logScreen();
    void patientScreen();
    void prescriptionMessages();
    void searchLists();
    void printing();
    void history();
    void dialogs();
    void otherBenches();
    void boxProblems();
    void errorReports();
    void unsaved();

    void main(const QString& name);
    void tabs(sorvanto::ScreenNumber number, const QString& tabWidget, const QString& name);
    void press(sorvanto::ScreenNumber number, const QString& button);
    void printed(const QString& entry, const QString& name);

    TourAsker m_asker;
};

}  // namespace languages
