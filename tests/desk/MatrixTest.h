// Everything that can stand before the user, crossed with everything that a mixer can do meanwhile.
//   ModalThings_*.cpp  the rows: how each thing is opened      MatrixTest.cpp  the events and what has to hold
//   ModalSites.cpp     what the sources can open, compared with the rows
#pragma once

#include "DeskTest.h"

#include <QMap>
#include <functional>
#include <ostream>
#include <vector>

class MatrixTest;

/// One thing that stands before the user. open shows it, lets the event happen in it, and is back when it is gone.
struct ModalThing {
    const char* name;
    /// The calls in the sources that it stands for: "core/frmAbout", or "file Call" for one of several.
    QStringList sites;
    std::function<void(MatrixTest&)> open;
    /// A mix has ended before: the thing comes up while it is signed, or beside an offer.
    bool signing = false;
    std::function<void(MatrixTest&)> before = {};  ///< once, before the first event
    bool changesRows = false;                      ///< by what was answered
    int formula = 1;                               ///< that is mixed; 0: one without a record
    bool blocks = true;                            ///< false: the desk stays free beside it
    bool signedNow = false;  ///< by the card's button, while the text still stands there
};
std::ostream& operator<<(std::ostream& out, const ModalThing& thing);

/// How the mix of an event comes to its end.
enum class Ending { Logged, Without };

struct MixerEvent {
    const char* name;
    std::function<void(MatrixTest&)> happen;
    Ending ending = Ending::Logged;
    bool needsMix = true;                              ///< not possible while another mix is signed
    std::function<void(MatrixTest&)> afterwards = {};  ///< what the world does to go on
};

class MatrixTest : public DeskTest, public testing::WithParamInterface<ModalThing> {
public:
    static std::vector<ModalThing> questions();
    static std::vector<ModalThing> windows();
    static std::vector<ModalThing> all();
    static const std::vector<MixerEvent>& events();

protected:
    void SetUp() override;
    static void TearDownTestSuite();

    /// The event, with a look at what was on show before and after.
    void happens();
    /// The event inside the next modal window of that name, which is then left by that button, or closed.
    void happensIn(const QString& window, const QString& button = {});
    /// Typed into the box of the screen on show and still there after the event.
    void typed(sorvanto::ScreenNumber screen, const QString& box);
    /// What the program opens before or after the thing itself.
    void pass(const QString& window, const QString& button);
    void unlock(const QString& screenButton);
    /// The first quantity of a formula with lines, typed over and not committed.
    void openCell(const QString& text);
    /// Gives a mix without a record its formula, and signs it.
    void signUnnamed();
    void cross(const MixerEvent& event);
    /// Mixes of this combination that run, wait, are offered or are in the log.
    int accounted() const;
    bool relinked();
    void replug(const sorvanto::mixersim::SimulatedMixer& mixer);
    QString rows() const;

    const MixerEvent* event = nullptr;
    sorvanto::mixersim::SimulatedMixer own = line.mixer;  ///< beside a second one
    int happened = 0, logsBefore = 0;
    qsizetype offersBefore = 0;

private:
    void beginSigning();
    void finish();
    /// Presses Sign now; what was typed is on offer, or still in its box, and is given up then.
    void signNowAndDiscard();
    static QStringList textsIn(const QWidget& window);

    static inline int combinations = 0;
};
