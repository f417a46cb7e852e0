// The failure handler and its default.
#include "platform/report/ReportHooks.h"

#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Texts.h"

namespace platform {

namespace {
std::function<void()>& handler() {
    static std::function<void()> current;
    return current;
}

std::function<QString(const QString&)>& noteSource() {
    static std::function<QString(const QString&)> current;
    return current;
}

std::function<std::vector<SavedFileAction>(const QString&)>& savedFileHandler() {
    static std::function<std::vector<SavedFileAction>(const QString&)> current;
    return current;
}
}  // namespace

void setReportFailureHandler(std::function<void()> function) { handler() = std::move(function); }

void reportFailed() noexcept {
    try {
        if (handler())
            return handler()();
        const RuntimeError failure = currentError();
        MsgBox(failure.description(), {Buttons::Ok, Icon::Critical});
    } catch (...) {
        // Neither the handler nor the box could tell; the report stays ended.
    }
}

void setSavedNote(std::function<QString(const QString&)> note) { noteSource() = std::move(note); }

QString savedNote(const QString& reportName) { return noteSource() ? noteSource()(reportName) : QString(); }

void setSavedFileHandler(std::function<std::vector<SavedFileAction>(const QString&)> function) {
    savedFileHandler() = std::move(function);
}

std::vector<SavedFileAction> fileSaved(const QString& path) {
    return savedFileHandler() ? savedFileHandler()(path) : std::vector<SavedFileAction>();
}

QString reportText(const char* english) { return widgetText(QString::fromLatin1(english)); }

}  // namespace platform
