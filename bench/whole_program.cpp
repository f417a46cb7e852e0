// Start and drive of the whole window.
#include "whole_program.h"

#include "platform/basic/Paths.h"
#include "shared/ErrorReporter.h"
#include "shared/basMain.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace bench {

platform::Answer ReplyingAsker::messageBox(const QString& prompt, platform::BoxStyle style, const QString&) {
    if (style.buttons == platform::deletionStyle.buttons)
        return platform::Answer::Yes;
    if (style.buttons == platform::Buttons::Ok) {
        std::fprintf(stderr, "Told: %s\n", qPrintable(prompt));
        return platform::Answer::Ok;
    }
    std::fprintf(stderr, "Asked: %s\n", qPrintable(prompt));
    std::exit(EXIT_FAILURE);
}

void ReplyingAsker::showModal(QObject& window, const std::function<void()>&) {
    auto& form = dynamic_cast<QWidget&>(window);
    form.show();
    settle();
    if (const auto answer = reply)  // which may put another one in its place
        answer(form);
    form.hide();
}

WholeProgram::WholeProgram(int rows, const char* statements, const std::function<void()>& prepare)
    : m_folder(rows) {
    m_folder.run(statements);
    platform::setProgramFolder(m_folder.path());
    if (prepare)
        prepare();
    platform::setApplicationTitle(u"Sorvanto Control Panel"_s);
    platform::setAsker(&asker);
    m_window = std::make_unique<sorvanto::frmMain>(sorvanto::realParts(sorvanto::basMain::context()));
    m_window->Form_Load();
    m_window->resize(1366, 768);
    m_window->show();
    settle();
}

WholeProgram::~WholeProgram() {
    const auto reporter = sorvanto::basMain::ErrorReporter;
    for (const sorvanto::ErrorReport& report : reporter->reports())
        std::fprintf(stderr, "Reported: %s: %s\n", qPrintable(report.tag), qPrintable(report.description));
    m_window.reset();
    sorvanto::basMain::reset();
    platform::setAsker(nullptr);
    if (!reporter->reports().empty())
        std::exit(EXIT_FAILURE);
}

void WholeProgram::click(const char* band, const char* tool) {
    m_window->ActiveBar_ToolClick(m_window->bar().band(QLatin1String(band)).tool(QLatin1String(tool)));
    settle();
}

void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

}  // namespace bench
