// sorvanto-report: the reports as PDF and spreadsheet files, without a window.
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Version.h"
#include "platform/data/Engine.h"
#include "platform/report/PreviewNotices.h"
#include "platform/report/ReportOutput.h"
#include "platform/report/ReportRun.h"
#include "report/Answers.h"
#include "report/Papers.h"
#include "report/Pharmacy.h"
#include "setup/ProgramFolder.h"
#include "shared/Context.h"

#include <QApplication>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

enum ExitCode { done, failed, wrongUse };

void tell(QTextStream& err, const QString& text) { err << "sorvanto-report: " << text << '\n'; }

void write(const Order& order, const platform::ReportRun& run) {
    if (!order.xls.isEmpty())
        platform::writeFile(order.xls, sheetOf(run));
    if (!order.pdf.isEmpty())
        platform::savePdf(run.document(), order.pdf);
}

/// What a reader of the paper must know: values that have no room. Shortened words show for themselves.
QStringList warnings(const platform::PageDocument& document) {
    QStringList sentences;
    for (const platform::PageWarning& warning : document.warnings) {
        if (warning.kind != platform::WarningKind::TextCut)
            sentences << platform::PreviewNotices::sentence(warning);
    }
    return sentences;
}

/// Reads the report's records, all as of one moment; they are held no longer than that.
std::unique_ptr<platform::Report> readReport(const Pharmacy& pharmacy, const Order& order,
                                             const QString& programFolder) {
    const platform::Connection& records = *pharmacy.context().connection;
    QStringList folders{programFolder};
    if (!records.isServer())
        folders.prepend(QFileInfo(order.database).absolutePath());
    const auto look = records.engine().beginLook();
    return makeReport(pharmacy.context(), order, folders);
}

/// Makes the report and writes its files; gives what is to be told instead when there is nothing to write.
QStringList make(const Order& order, const Answers& answers, QTextStream& err) {
    const QString folder = chooseProgramFolder(Surroundings::ofProcess(order.folder)).path;
    Pharmacy pharmacy(folder);
    pharmacy.open(order);
    const auto problems = [&] { return pharmacy.failures() + answers.said(); };
    std::unique_ptr<platform::Report> report = readReport(pharmacy, order, folder);
    if (!problems().isEmpty() || !report || report->isUnloaded())
        return problems();
    platform::ReportRun run(std::move(report));
    run.makeAll();
    if (!problems().isEmpty())
        return problems();
    const QStringList remarks = warnings(run.document()) + remarksOn(run.report());
    if (run.document().leftOutLabels > 0)
        return remarks;
    write(order, run);
    for (const QString& remark : remarks)
        tell(err, remark);
    return {};
}

int run(const Order& order, QTextStream& err) {
    Answers answers(order);
    platform::setAsker(&answers);
    QStringList problems;
    try {
        problems = make(order, answers, err);
    } catch (...) {
        problems = answers.said();
        problems << platform::currentError().description();
    }
    platform::setAsker(nullptr);
    problems.removeDuplicates();
    for (const QString& problem : problems)
        tell(err, problem);
    return problems.isEmpty() ? done : failed;
}

}  // namespace

int main(int argc, char* argv[]) {
    // Nothing is shown; a display that isn't there, or can't be reached, must not be in the way.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt's remarks on the session mean nothing to whoever reads a nightly job's messages.
    QLoggingCategory::setFilterRules(u"default.warning=false"_s);
    const QApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList arguments = QApplication::arguments().mid(1);
    if (asksForHelp(arguments)) {
        out << usage();
        return done;
    }
    if (arguments == QStringList{u"--version"_s}) {
        out << "sorvanto-report " << platform::programVersion() << '\n';
        return done;
    }
    try {
        return run(readOrder(arguments), err);
    } catch (const WrongUse& wrong) {
        tell(err, QString::fromUtf8(wrong.what()) + u"\n"_s);
        err << usage();
        return wrongUse;
    }
}
