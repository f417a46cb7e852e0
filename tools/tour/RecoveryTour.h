// What happens around an unlucky end: the program killed while a batch waits for its initials, the offer of
// that batch at the next start, initials that the database refuses, and a second start beside the first.
#pragma once

#include "Program.h"
#include "Visitor.h"

namespace tour {

class RecoveryTour {
public:
    explicit RecoveryTour(const QString& programFolder);

    /// Mixes a batch and has this process killed while the dialog of the initials is open.
    [[noreturn]] void dieBeforeLogging();
    /// Mixes a batch, signs it with the given initials, and requires that they are refused and reported, that
    /// nothing is logged and that the mix stays on offer.
    void signInVain(const QString& initials);
    /// Logs the mix that is on offer and requires the log to be right.
    void logOffer();
    /// Requires the program to refuse its start.
    void startSecond();
    /// Has the handler of an event fail, and requires that it is reported and the program goes on.
    void failInAnEvent();

private:
    void chooseAndMake(const Robot::Script& signing);
    void requireOffer(const QString& lot);
    int logged() const;
    QString database() const;

    QString m_folder;
    Visitor m_visitor;
    Program m_program;
};

}  // namespace tour
