// What the fuzz entries share: the test that ends the process, and a program folder to put files into.
#pragma once

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

using namespace Qt::StringLiterals;

/// A property that has to hold for every input; the fuzzer keeps the input of a process that aborts.
inline void require(bool holds, const char* property) {
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", property);
    std::abort();
}

inline QByteArray bytes(const std::uint8_t* data, std::size_t size) {
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

/// Runs the body; whether it came to its end. A refusal may have no other number than these.
template <class Body>
bool succeeds(std::initializer_list<std::int32_t> refusals, Body&& body) {
    try {
        body();
        return true;
    } catch (const platform::RuntimeError& failure) {
        bool known = false;
        for (const std::int32_t number : refusals)
            known = known || number == failure.number();
        require(known, "a refusal has one of the expected numbers");
        return false;
    }
}

/// A program folder for the whole run, in memory where the system offers that.
class Folder {
public:
    Folder() : m_folder(place() + u"/sorvanto-fuzz-XXXXXX"_s) { platform::setProgramFolder(m_folder.path()); }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString& name, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
                "the input is written");
    }

private:
    static QString place() {
        const QString memory = u"/dev/shm"_s;
        return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    }

    QTemporaryDir m_folder;
};

}  // namespace fuzz
