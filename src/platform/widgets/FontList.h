// The system's list of fonts, which takes a start as long to read as its connection to the display takes.
#pragma once

#include <thread>

namespace platform {

/// Reads the list in a thread of its own. To be made before the application, and waited for before the first text
/// is measured: the toolkit finds the list read then, and would else read it a second time.
class FontList {
public:
    FontList();

    /// Returns at once where the system has no such list.
    void wait();

private:
    std::jthread m_reading;
};

}  // namespace platform
