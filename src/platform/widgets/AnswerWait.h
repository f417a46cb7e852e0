// The wait for a server's answer as the user sees it: windows are painted, and from a third of a second on one says what is
// waited for and ends it.
#pragma once

#include "platform/data/Waiter.h"
#include "platform/widgets/UnderWay.h"

#include <QProgressDialog>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

namespace platform {

class AnswerWait : public Waiter {
public:
    /// what: gives what is waited for, in the user's language. saved: see Waiter::foundSaved; called by the event loop.
    AnswerWait(std::function<QString()> what, std::function<void()> saved);
    ~AnswerWait() override;

    /// What is asked while one lives keeps nobody waiting: after a third of a second the wait ends by itself, and no window
    /// shows it.
    class Quietly {
    public:
        Quietly();
        ~Quietly();
        Quietly(const Quietly&) = delete;
        Quietly& operator=(const Quietly&) = delete;
    };

    /// No timer runs meanwhile and no line is heard, and nothing is clicked but the window of the wait.
    bool goesOn(int waited) override;
    bool isPatient() const override;
    void ended() override;
    void foundSaved() override;

private:
    std::function<QString()> m_what;
    std::function<void()> m_saved;
    std::optional<UnderWay> m_underWay;
    std::unique_ptr<QProgressDialog> m_window;
};

}  // namespace platform
