// Which printers the system has, asked in a thread of its own: a print service that does not answer holds nobody up.
#pragma once

#include <QStringList>
#include <functional>
#include <future>
#include <optional>

namespace platform {

class PrinterQuestion {
public:
    /// Asks. While an earlier question has no answer yet, that answer is waited for.
    PrinterQuestion();

    /// Waits so many milliseconds at most; true when the answer is there.
    bool answered(int milliseconds = 0) const;
    /// The names in the system's order; empty before the answer.
    QStringList names() const;

private:
    std::shared_future<QStringList> m_answer;
};

/// The names as soon as they are there. After a moment a window says that they are waited for; nothing when the user
/// stops that, or when it has taken twenty seconds.
std::optional<QStringList> printerNames();

enum class Asked { AtOnce, InThread };
/// Puts another list in place of the system's, for tests; an empty function restores that.
void setPrinterNames(std::function<QStringList()> names, Asked asked = Asked::AtOnce);

}  // namespace platform
