// Who is told that the shared connection has been opened.
#pragma once

#include <functional>

namespace sorvanto::basMain {

/// Called by openDB after each opening; set by the main window once it knows whether another program runs.
extern std::function<void()> databaseOpened;

}  // namespace sorvanto::basMain
