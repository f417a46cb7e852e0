#include "BenchTour.h"

#include "Batch.h"
#include "Program.h"

#include <QDir>
#include <QLabel>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

const QString made = u"Hydrocortisone 1% Cream"_s;
constexpr int quantity = 35;

void changeDescription(Visitor& visitor, const QString& description) {
    visitor.tool(u"cmdEdit"_s);
    visitor.type(u"txtfrm_Desc"_s, description);
    visitor.tool(u"cmdSave"_s);
    visitor.requireText(u"txtfrm_Desc"_s, description);
    visitor.requireNoReport();
    visitor.picture(u"saved-formula"_s);
}

void makeBatch(Visitor& visitor) {
    Batch batch(visitor, made, quantity);
    batch.setSigning([&](QWidget& dialog) {
        std::printf("%s\n", qUtf8Printable(Visitor::find<QLabel>(dialog, u"lbllog_Lot"_s).text()));
        std::fflush(stdout);
        batch.sign(dialog, Batch::compounder, Batch::verifier);
    });
    batch.announceQuantity();
    visitor.tool(u"cmdMake"_s);
    batch.mix();
    batch.requireFormulas();
    visitor.requireNoReport();
}

}  // namespace

void runBench(const QString& programFolder, const QString& description, int batches) {
    Visitor visitor(QDir(programFolder).filePath(u"tour"_s), u"bench-"_s);
    Program program(visitor, programFolder);
    program.start();
    require(!program.ended(), u"the program ended at its start."_s);
    visitor.requireNoReport();
    visitor.search(u"Hydroc"_s);
    visitor.requireText(u"txtfrm_Name"_s, made);
    changeDescription(visitor, description);
    for (int batch = 0; batch < batches; ++batch)
        makeBatch(visitor);
    visitor.tool(u"cmdLogs"_s);
    visitor.requireText(u"txtlog_Name"_s, made);
    visitor.picture(u"log"_s);
    visitor.requireNoReport();
    program.leave();
}

}  // namespace tour
