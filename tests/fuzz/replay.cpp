// Runs a fuzz entry over the files of its corpus, so that every find stays tested without a fuzzer.
#include <QDir>
#include <QFile>
#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QString::fromLocal8Bit(argv[i]));
        for (const QFileInfo& entry : folder.entryInfoList(QDir::Files, QDir::Name)) {
            QFile file(entry.filePath());
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            const QByteArray content = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.constData()),
                                   static_cast<std::size_t>(content.size()));
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
