// Fork, watch, read the system's accounts of the process, end it.
#include "started_process.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QThread>
#include <csignal>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int longestStart = 20'000;  // milliseconds
constexpr int stripWidth = 32;

struct Picture {
    double wall, processor;
    QImage strip;
};

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A column of the screen from top to bottom, where every part of the window has its share.
QImage strip() {
    QScreen& screen = *QGuiApplication::primaryScreen();
    const QSize size = screen.size();
    return screen.grabWindow(0, size.width() * 2 / 5, 0, stripWidth, size.height()).toImage();
}

/// Time on a processor of all threads, in milliseconds.
double processorTime(pid_t process) {
    const QString tasks = u"/proc/%1/task"_s.arg(process);
    double nanoseconds = 0;
    for (const QString& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        nanoseconds += content(tasks + '/' + task + "/schedstat").split(' ').value(0).toDouble();
    return nanoseconds / 1e6;
}

/// A line of /proc/<process>/status, in MB.
double statusLine(pid_t process, const char* name) {
    const QByteArray status = content(u"/proc/%1/status"_s.arg(process));
    for (const QByteArray& line : status.split('\n'))
        if (line.startsWith(name))
            return line.simplified().split(' ').value(1).toDouble() / 1024;
    return 0;
}

/// The same but for a blinking caret.
bool nearlyEqual(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            different += a.pixel(x, y) != b.pixel(x, y);
    return different * 100 < a.width() * a.height();
}

pid_t launch(const QString& program) {
    const QByteArray path = program.toLocal8Bit();
    const pid_t process = fork();
    if (process == 0) {
        execl(path.constData(), path.constData(), static_cast<char*>(nullptr));
        _exit(127);
    }
    return process;
}

void endProcess(pid_t process) {
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
}

/// The pictures that followed on each other after the empty screen, up to the rest.
std::vector<Picture> watch(pid_t process, const QImage& before, const QElapsedTimer& clock, int rest) {
    std::vector<Picture> pictures;
    double lastChange = 0;
    while (clock.elapsed() < longestStart &&
           (pictures.empty() || static_cast<double>(clock.elapsed()) - lastChange < rest)) {
        const QImage now = strip();
        if (now != (pictures.empty() ? before : pictures.back().strip)) {
            lastChange = static_cast<double>(clock.nsecsElapsed()) / 1e6;
            pictures.push_back({lastChange, processorTime(process), now});
        }
        QThread::msleep(1);
    }
    return pictures;
}

}  // namespace

Start watchStart(const QString& program, int rest) {
    const QImage before = strip();
    QElapsedTimer clock;
    clock.start();
    const pid_t process = launch(program);
    const std::vector<Picture> pictures = watch(process, before, clock, rest);
    Start result;
    result.peak = statusLine(process, "VmHWM:");
    result.resident = statusLine(process, "VmRSS:");
    result.own = statusLine(process, "RssAnon:");
    endProcess(process);
    for (QElapsedTimer wait = clock; strip() != before && wait.elapsed() < longestStart;)
        QThread::msleep(5);
    if (pictures.empty())
        throw std::runtime_error("Nothing was shown by " + program.toStdString());
    for (const Picture& picture : pictures) {
        if (nearlyEqual(picture.strip, pictures.back().strip)) {
            result.wall = picture.wall;
            result.processor = picture.processor;
            break;
        }
    }
    return result;
}

}  // namespace bench
