#include "platform/basic/ProcessChange.h"

#include <QFile>
#include <cstdio>
#include <fcntl.h>
#include <linux/close_range.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr unsigned firstOwnFile = 3;

}  // namespace

void changeProcess(const QString& program, const QStringList& arguments) {
    std::vector<QByteArray> words{QFile::encodeName(program)};
    for (const QString& argument : arguments)
        words.push_back(argument.toLocal8Bit());
    std::vector<char*> line;
    for (QByteArray& word : words)
        line.push_back(word.data());
    line.push_back(nullptr);
    std::fflush(nullptr);
    // A library may have opened a file that would live on.
    ::close_range(firstOwnFile, ~0U, CLOSE_RANGE_CLOEXEC);
    ::execv(line.front(), line.data());
}

QStringList ownArguments() {
    QFile line(u"/proc/self/cmdline"_s);
    QStringList words;
    if (line.open(QIODevice::ReadOnly)) {
        for (const QByteArray& word : line.readAll().split('\0').mid(1))
            words << QString::fromLocal8Bit(word);
    }
    if (!words.isEmpty() && words.constLast().isEmpty())  // behind the last mark
        words.removeLast();
    return words;
}

}  // namespace platform
