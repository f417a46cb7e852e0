#include "platform/report/PrinterQuestion.h"

#include "platform/report/ReportHooks.h"
#include "platform/widgets/LongWork.h"

#include <QDeadlineTimer>
#include <QPrinterInfo>
#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int turn = 10;            // milliseconds
constexpr int longestWait = 20000;  // milliseconds

struct Source {
    std::function<QStringList()> names;
    Asked asked;
};

Source& source() {
    static Source one;
    return one;
}

/// The thread is left to itself: one that hangs ends with the program.
std::shared_future<QStringList> ask() {
    const auto names = source().names ? source().names : QPrinterInfo::availablePrinterNames;
    std::packaged_task<QStringList()> task(names);
    std::shared_future<QStringList> answer = task.get_future().share();
    if (source().names && source().asked == Asked::AtOnce)
        task();
    else
        std::thread(std::move(task)).detach();
    return answer;
}

bool isReady(const std::shared_future<QStringList>& answer, int milliseconds) {
    return answer.wait_for(std::chrono::milliseconds(milliseconds)) == std::future_status::ready;
}

}  // namespace

PrinterQuestion::PrinterQuestion() {
    static std::shared_future<QStringList> last;
    if (!last.valid() || isReady(last, 0))
        last = ask();
    m_answer = last;
}

bool PrinterQuestion::answered(int milliseconds) const { return isReady(m_answer, milliseconds); }

QStringList PrinterQuestion::names() const { return answered() ? m_answer.get() : QStringList(); }

std::optional<QStringList> printerNames() {
    const PrinterQuestion question;
    LongWork work(reportText("Asking for the printers"));
    const QDeadlineTimer end(longestWait);
    while (!question.answered(turn)) {
        if (end.hasExpired() || !work.goesOn(-1))
            return std::nullopt;
    }
    return question.names();
}

void setPrinterNames(std::function<QStringList()> names, Asked asked) {
    source() = {std::move(names), asked};
}

}  // namespace platform
