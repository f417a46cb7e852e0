// How long a text takes through the language store with 600 entries: the last entry of the file, a text
// that is not there yet (the file is rewritten), and a read of an option. Beside them the baseline: the search
// alone on the bare document, and writing the file's bytes alone.
#include "config/clsLanguage.h"
#include "config/clsOptions.h"
#include "platform/basic/Paths.h"
#include "platform/xml/XmlDocument.h"
#include "shared/basMain.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 600;

QString keyText(int number) { return u"A caption or message of the program, number %1"_s.arg(number); }

QByteArray languageFile() {
    QByteArray xml = "<Translations Language=\"German\">";
    for (int i = 0; i < entryCount; ++i)
        xml += "<Translate English=\"" + keyText(i).toUtf8() + "\" Translated=\"Deutsch " +
               QByteArray::number(i) + "\"/>";
    return xml + "</Translations>";
}

/// A program folder with a German language file of 600 entries.
class Program {
public:
    Program() {
        platform::setProgramFolder(m_folder.path());
        write(u"GermanTranslation.xml"_s, languageFile());
        write(u"options.xml"_s,
              "<Configuration><Options><Language>2</Language></Options><Pharmacy><DEA>1</DEA></Pharmacy>"
              "</Configuration>");
        language.setLanguage(2);
    }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    sorvanto::clsLanguage language;

private:
    void write(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        file.open(QIODevice::WriteOnly);
        file.write(content);
    }

    QTemporaryDir m_folder;
};

void translateKnown(benchmark::State& state) {
    Program program;
    const QString key = keyText(static_cast<int>(state.range(0)));
    for (auto step : state) {
        QString text = key;
        QString result;
        program.language.translate(text, result);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(translateKnown)->Arg(0)->Arg(entryCount / 2)->Arg(entryCount - 1)->Unit(benchmark::kMicrosecond);

void baselineOfSearch(benchmark::State& state) {
    const auto document = platform::XmlDocument::create();
    document->loadXML(QString::fromUtf8(languageFile()));
    const QString path = u"//Translate[@English='%1']"_s.arg(keyText(entryCount - 1));
    for (auto step : state)
        benchmark::DoNotOptimize(document->selectSingleNode(path));
}
BENCHMARK(baselineOfSearch)->Unit(benchmark::kMicrosecond);

void translateNew(benchmark::State& state) {
    Program program;
    int number = entryCount;
    for (auto step : state) {
        QString text = keyText(number++);
        QString result;
        program.language.translate(text, result);
    }
}
BENCHMARK(translateNew)->Iterations(50)->Unit(benchmark::kMicrosecond);

void baselineOfWrite(benchmark::State& state) {
    const Program program;
    const QByteArray content = languageFile();
    for (auto step : state)
        platform::writeFile(program.path(u"copy.xml"_s), content);
}
BENCHMARK(baselineOfWrite)->Iterations(50)->Unit(benchmark::kMicrosecond);

void loadLanguage(benchmark::State& state) {
    Program program;
    for (auto step : state)
        program.language.setLanguage(2);
}
BENCHMARK(loadLanguage)->Unit(benchmark::kMicrosecond);

void readOption(benchmark::State& state) {
    const Program program;
    const sorvanto::clsOptions options(sorvanto::basMain::context());
    for (auto step : state)
        benchmark::DoNotOptimize(options.DEA());
}
BENCHMARK(readOption)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
