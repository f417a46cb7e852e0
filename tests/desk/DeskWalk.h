// A random walk over the real windows and the model of them at once.
//   DeskWalk.cpp        the walk, and how a step is done        DeskWalkSteps.cpp   what a step can be
//   DeskWalkLook.cpp    what both show, as text
#pragma once

#include "DeskModel.h"
#include "DeskTest.h"

#include <deque>
#include <random>

class DeskWalk : public DeskTest {
protected:
    void SetUp() override;
    void seed() override;

    /// Walks until the steps are done or the windows differ from the model.
    void walk(int steps, unsigned seed);

    /// Asked where a mix runs: whether it is to end while this step waits for an answer, by endsInAWait().
    virtual bool wantsEndInAWait() { return false; }
    /// To be called in a wait; does what was wanted, once.
    void endsInAWait();

    desk::Model model{[this](int count) { return pick(count); }};
    int windowsSeen = 0, mixesEnded = 0;

private:
    /// One thing that the user or the mixer does, to the model and to the windows.
    struct Step {
        QString text;
        std::function<void()> inModel, inWindow;
    };
    int pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    bool take(Step step);
    Step choose();
    Step clickStep();
    Step keyStep();
    Step typeStep();
    Step searchStep();
    Step mixerStep();
    Step mixEndsStep();
    Step stripStep();
    Step prescriptionStep();
    bool isWalked(const QString& tool) const;
    void clickInWindow(const QString& tool, bool byMouse);
    void typeInWindow(const desk::Box& typed, const QString& text);
    void expectWindow(const desk::Question& question, bool mixEndsInside);
    void endTheMix();
    void loseLinkAndBack();
    void stopAtTheDevice();

    void readRows();
    void readControls();
    QString modelText() const;
    QString windowText() const;
    QString rowsInModel() const;
    QString rowsInFile() const;
    QString screenInModel(sorvanto::ScreenNumber number) const;
    QString screenInWindow(sorvanto::ScreenNumber number) const;

    std::mt19937 m_random;
    std::map<sorvanto::ScreenNumber, std::vector<std::pair<QString, bool>>> m_controls;  ///< name, open
    std::deque<QString> m_lastSteps;
    int m_step = 0;
    bool m_endsInAWait = false;
};
