// What the report engine takes from the program above it, and its captions.
#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace platform {

/// Called in a catch block when a report or its output failed and no caller is left to be told. Without
/// it the failure shows as a message box.
void setReportFailureHandler(std::function<void()> handler);
/// Hands the exception in flight on; to be called in a catch block, never throws.
void reportFailed() noexcept;

/// Gives what the user should know of a file that he has saved from the report of that name; empty: nothing.
void setSavedNote(std::function<QString(const QString& reportName)> note);
QString savedNote(const QString& reportName);

/// What can be done with a file that was saved.
struct SavedFileAction {
    QString text;  ///< in the user's language
    std::function<void()> run;
};
/// Hears of each file that the user has saved from a preview, and says what can be done with it.
void setSavedFileHandler(std::function<std::vector<SavedFileAction>(const QString& path)> handler);
/// Tells of it; nothing can be done where nobody hears.
std::vector<SavedFileAction> fileSaved(const QString& path);

/// A caption of the engine in the user's language, as the widgets' translator gives it.
QString reportText(const char* english);

}  // namespace platform
