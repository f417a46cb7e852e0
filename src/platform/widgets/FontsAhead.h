// The system's fonts are looked for while the program connects to the screen: both take milliseconds and neither needs
// the other.
#pragma once

#include <thread>

namespace platform {

class FontsAhead {
public:
    /// Begins in a thread of its own; does nothing where the system has another way of finding fonts.
    FontsAhead();
    FontsAhead(const FontsAhead&) = delete;
    FontsAhead& operator=(const FontsAhead&) = delete;
    /// Waits for the end of it.
    ~FontsAhead();

private:
    std::thread m_thread;
};

}  // namespace platform
