// Running actions and counting their blocks.
#include "blocks.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>

namespace bench {

namespace {

constexpr qint64 patience = 60'000;  // milliseconds

qint64 longest = 0;
QElapsedTimer all;
QString longestEvent;

}  // namespace

void Blocks::note(qint64 block, const QString& event) {
    if (block < longest)
        return;
    longest = block;
    longestEvent = event;
}

void Blocks::measure(const char* action, const std::function<void()>& work,
                     const std::function<bool()>& over) {
    settleDown();
    begin();
    bool done = false;
    QTimer::singleShot(0, &m_loop, [&] {
        work();
        done = true;
    });
    while ((!done || (over && !over())) && all.elapsed() < patience)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    print(action);
    settleDown();
}

void Blocks::window(const char* action, const char* band, const char* tool,
                    const std::function<void(QWidget&)>& steps) {
    m_program.asker.reply = [this, action, &steps](QWidget& form) {
        m_program.asker.reply = [](QWidget&) {};  // for the windows that this one opens
        QCoreApplication::processEvents();
        print(action);
        if (steps)
            steps(form);
        begin();
    };
    measure("&nbsp; its end", [&] { press(band, tool); });
    m_program.asker.reply = {};
}

void Blocks::click(const char* action, const char* band, const char* tool) {
    measure(action, [this, band, tool] { press(band, tool); });
}

void Blocks::press(const char* band, const char* tool) {
    auto& window = m_program.window();
    window.ActiveBar_ToolClick(window.bar().band(QLatin1String(band)).tool(QLatin1String(tool)));
}

void Blocks::begin() {
    longest = 0;
    all.start();
}

void Blocks::print(const char* action) {
    std::printf("| %s | %lld ms | %lld ms | %s |\n", action, static_cast<long long>(longest),
                static_cast<long long>(all.elapsed()), qPrintable(longestEvent));
    std::fflush(stdout);
}

void Blocks::settleDown() {
    const QDeadlineTimer end(250);
    while (!end.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

}  // namespace bench
