// From the start of the process to the painted Formulas screen, beside an empty window of the same size.
// The programs take turns, so that what else the machine does falls on all of them; medians are printed.
//   bench_start [rounds] [executable ...]     other builds, beside this one's in the folder of executables
#include "program_folder.h"
#include "started_process.h"

#include <QGuiApplication>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <vector>

using bench::Start;

namespace {

constexpr int defaultRounds = 15;
constexpr int firstRest = 4000;  // milliseconds: the first start of a day copies the database afterwards

struct Candidate {
    QString name;
    QString program;
    std::vector<Start> starts;
};

double median(const std::vector<Start>& starts, double Start::*value) {
    std::vector<double> values;
    for (const Start& start : starts)
        values.push_back(start.*value);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double least(const std::vector<Start>& starts, double Start::*value) {
    double result = starts.front().*value;
    for (const Start& start : starts)
        result = std::min(result, start.*value);
    return result;
}

void print(const Candidate& candidate) {
    const auto& starts = candidate.starts;
    std::printf("| %s | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f |\n", qPrintable(candidate.name),
                median(starts, &Start::wall), least(starts, &Start::wall), median(starts, &Start::processor),
                least(starts, &Start::processor), median(starts, &Start::peak),
                median(starts, &Start::resident), median(starts, &Start::own));
}

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    const int rounds = std::max(1, argc > 1 ? std::atoi(argv[1]) : defaultRounds);
    const bench::ProgramFolder full(30'000), sample(0);
    const QString folder = QString::fromUtf8(SORVANTO_BIN_DIR "/");
    std::vector<Candidate> candidates{{"empty window", folder + "bench_empty_window", {}},
                                      {"window with texts", folder + "bench_text_window", {}},
                                      {"sorvanto, 30,000 rows", full.addExecutable("sorvanto"), {}},
                                      {"sorvanto, sample", sample.addExecutable("sorvanto"), {}}};
    for (int i = 2; i < argc; ++i)
        candidates.push_back({argv[i], full.addExecutable(argv[i]), {}});
    for (const Candidate& candidate : candidates)
        bench::watchStart(candidate.program, firstRest);
    for (int round = 0; round < rounds; ++round)
        for (Candidate& candidate : candidates)
            candidate.starts.push_back(bench::watchStart(candidate.program));
    std::printf("%d starts each; milliseconds to the picture, memory in MB\n\n", rounds);
    std::printf("| | by the clock | least | processor | least | most memory | at rest | without files |\n"
                "|---|---|---|---|---|---|---|---|\n");
    for (const Candidate& candidate : candidates)
        print(candidate);
    return 0;
}
