// The patient screen on three patients; the first has two prescriptions.
#pragma once

#include "ScreenTest.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"
#include "screens/frmPatient.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

/// Of the batch of a new prescription.
inline const QString searchPrompt = "Enter all or part of Log name";

class PatientScreenTest : public ScreenTest {
protected:
    /// Patients 1 to 3: Jane Doe, Ole Lie, Mary O'Hara. Prescriptions 31 (batch 1, older) and 32 (batch 2) of
    /// Jane Doe.
    void seed() override;
    void openScreen() {
        load();
        click("cmdPatients");
    }
    void edit() {
        openScreen();
        click("cmdEdit");
    }
    /// Open for editing, with the prescriptions in front.
    void editPrescriptions() {
        edit();
        control<QTabWidget>(sorvanto::patients, "tabPatient").setCurrentIndex(1);
    }
    sorvanto::frmPatient& patient() const { return screen<sorvanto::frmPatient>(sorvanto::patients); }
    QString shown(const QString& name) const { return text(sorvanto::patients, name); }
    platform::TextBox& box(const QString& name) const {
        return control<platform::TextBox>(sorvanto::patients, name);
    }
    platform::DateBox& birthDate() const {
        return control<platform::DateBox>(sorvanto::patients, "txtpat_BDay");
    }
    /// Types over what the date box holds.
    void typeBirthDate(const QString& keys) const;
    platform::RecordGrid& grid() const { return control<platform::RecordGrid>(sorvanto::patients, "grdRXs"); }
    int prescriptions() const { return grid().model()->rowCount(); }
    /// The cells of a row as shown, joined by "|".
    QString row(int number) const;
    /// Opens the editor of a cell and types over what is there.
    void typeIntoCell(int rowNumber, const QString& caption, const QString& keys) const;
    /// Of the cell that is open; nothing when none is.
    QLineEdit* editor() const { return cellEditor(grid()); }
    void press(const QString& button) const { control<QPushButton>(sorvanto::patients, button).click(); }
    QString stored(const QString& columns, int key = 1) const {
        return sqlText(u"SELECT %1 FROM Patient WHERE PatientID = %2"_s.arg(columns).arg(key));
    }
    QString rx(const QString& columns, int key = 31) const {
        return sqlText(u"SELECT %1 FROM RXs WHERE RXsID = %2"_s.arg(columns).arg(key));
    }
};
