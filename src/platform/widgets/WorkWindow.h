// The window of what the user has to wait for, with a bar and a way to end it.
#pragma once

#include <QProgressDialog>
#include <QString>
#include <memory>

namespace platform {

/// What is over by then needs no window.
inline constexpr int windowlessMilliseconds = 300;

/// Modal to the whole program, above the window in use, not shown yet. Nobody knows how far the work is, until it is told.
/// what: what is being done, in the user's language.
std::unique_ptr<QProgressDialog> workWindow(const QString& what);

}  // namespace platform
