// Base of the record tests: a real database file with a few chemicals, formulas and batches, the statements
// of the program kept as handed in, identity texts counted instead of random, and a signing dialog without
// a window.
#pragma once

#include "platform/basic/RuntimeError.h"
#include "records/GUIDFactory.h"
#include "records/SigningDialog.h"
#include "records/clsChemical.h"
#include "records/clsFormula.h"
#include "records/clsLog.h"
#include "records/clsPatient.h"
#include "shared/basMain.h"
#include "support/Golden.h"
#include "support/StandardText.h"
#include "support/TestProgram.h"

#include <functional>

/// What the signing dialog of a test was given and answers.
struct Signing {
    QString lot;    ///< as the record set it
    int shown = 0;  ///< how often it was shown
    QString initials = "AB";
    QString verified = "CD";
    sorvanto::clsFormulaPtr formula;  ///< the answer; nothing means cancelled
    platform::XmlDocumentPtr document;
};

class RecordsTest : public support::TestProgram {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The statements since the last clear, each between > and <, one a line.
    QString traced() const;
    void expectStatements(const QString& goldenName) const;
    /// From now on a statement that holds this part fails with that number.
    void failStatement(const QString& part, std::int32_t number = platform::error::statement);

    /// Chemicals 1 to 4: Aspirin, Borax, Camphor, Menthol.
    void seedChemicals();
    /// Formula 1 "Cooling Gel": base 10, lines of Camphor 1.2345, Menthol 5 (quantum satis), Borax 0.5
    /// (inactive). Formula 2 "Plain Base" has none.
    void seedFormulas();
    /// Batches 1 to 3 of formula 1, the newest being 2; lines for 1 and 2.
    void seedLogs();

    static platform::XmlDocumentPtr document(const QString& xml);
    /// A results document of the lot AB0012.
    static platform::XmlDocumentPtr results();
    /// Puts a dialog with the test's answers in place of the real one.
    void useSigning();
    /// An opened formula, scaled.
    sorvanto::clsFormulaPtr scaled(std::int16_t formula, std::int16_t quantity);

    Signing signing;
};
