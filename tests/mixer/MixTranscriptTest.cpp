// The frames of whole courses, as they stand in the golden files.
#include "MixSessionTest.h"

#include "support/Golden.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using test::shortFormula;
using test::waitFor;

// What goes over the line. The questions for the state between, and their number, depend on the time and
// are left out, as are the sequence numbers with the checks.
class MixTranscriptTest : public MixSessionTest {
protected:
    void expectTranscript(const char* name) const {
        QString text;
        for (const QString& frame : std::as_const(line.transcript)) {
            QString shown = frame.section('*', 0, 0);
            shown.replace(1, 2, u".."_s);
            if (shown.contains(u"HELLO 1"_s))
                shown = shown.section(' ', 0, 2) + u" ........"_s;
            if (frame.endsWith(u"(lost)"_s))
                shown += u"   (lost)"_s;
            if (!shown.contains(u"STAT"_s))
                text += shown + '\n';
        }
        support::expectGolden(u"mixer/"_s + name + ".txt", text);
    }
};

TEST_F(MixTranscriptTest, WholeMix) {
    finishShort();
    ASSERT_TRUE(waitFor([&] { return line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("whole_mix");
}

TEST_F(MixTranscriptTest, PausedAndStopped) {
    startShort();
    session->run().pause();
    ASSERT_TRUE(reaches(RunState::Paused));
    session->run().resume();
    ASSERT_TRUE(reaches(RunState::Mixing));
    session->run().stop();
    ASSERT_TRUE(waitFor([&] { return done == 1 && line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("paused_and_stopped");
}

TEST_F(MixTranscriptTest, LostReplies) {
    loadShort();
    ASSERT_TRUE(waitFor([&] { return line.transcript.last().contains("LOADED"); }));
    line.loseReplies = 2;
    session->start();
    ASSERT_TRUE(reaches(RunState::Mixing));
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1 && line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("lost_replies");
}

TEST_F(MixTranscriptTest, OtherProgrammeReadBack) {
    line.mixer.misstoreNextStep();
    session->open();
    session->loadFormula(shortFormula());
    ASSERT_TRUE(waitFor([&] {
        return message() == PanelText::Misstored && line.mixer.state() == protocol::MixerState::Idle;
    }));
    expectTranscript("other_programme_read_back");
}

TEST_F(MixTranscriptTest, FinishedWhileTheProgramWasAway) {
    startShort();
    make();
    line.transcript.clear();
    line.run(shortTotal);
    session->open();
    ASSERT_TRUE(waitFor(
        [&] { return session->offers().size() == 1 && line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("finished_while_away");
}
