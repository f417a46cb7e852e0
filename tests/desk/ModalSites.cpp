// What the sources can put before the user, found by reading them: each call that opens something modal and each
// dialog class has a row in the matrix, or stands below with the reason why it has none.
#include "MatrixTest.h"

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// "core/frmMain MsgBox", or "class frmAbout" -> how often.
QMap<QString, int> sitesInSources() {
    static const QRegularExpression call(
        uR"(\b(?:platform::)?(MsgBox|InputBox)\((?!const )|[.>](showModal|openFile|inputBox|messageBox)\()"
        uR"(|\b(QMessageBox|QInputDialog|QProgressDialog|QColorDialog|QFontDialog|QFileDialog|QPrintDialog)[ ]\w+\()"
        uR"(|\b(QMessageBox|QInputDialog|QFileDialog)::(?:get|question|warning|information|critical))"_s);
    static const QRegularExpression dialog(
        uR"(class (\w+)(?: final)? : public (?:QDialog|QMessageBox|QFileDialog|QProgressDialog|(?:platform::)?ModalForm)\b)"_s);
    const QString root = QStringLiteral(SORVANTO_SOURCE_DIR) + u"/src/"_s;
    QMap<QString, int> sites;
    QDirIterator files(root, {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        const QString name = file.fileName().mid(root.size()).section(u'.', 0, 0);
        for (auto found = dialog.globalMatch(text); found.hasNext();)
            ++sites[u"class "_s + found.next().captured(1)];
        if (!file.fileName().endsWith(".cpp"_L1))
            continue;
        for (auto found = call.globalMatch(text); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            ++sites[name + u' ' + match.captured(match.lastCapturedIndex())];
        }
    }
    return sites;
}

/// Site, and why no mix can run while it is on show, or where else it stands.
const QMap<QString, std::pair<int, const char*>> withoutRow{
    {u"shared/openDB MsgBox"_s, {2, "at the start, before the mixer is opened"}},
    {u"core/frmMain_load MsgBox"_s, {1, "at the start, before the mixer is opened"}},
    {u"core/frmMain_switch MsgBox"_s, {1, "with records that can only be read, of which nothing is mixed"}},
    {u"screens/BrowsingScreen MsgBox"_s, {1, "on quitting, when the mixer's line is closed already"}},
    {u"platform/report/PrintFlow MsgBox"_s, {2, "only with a print queue on the computer"}},
    {u"platform/report/ReportHooks MsgBox"_s,
     {1, "only where the program has not set its own way of telling"}},
    {u"platform/ask/Ask inputBox"_s, {1, "the way of all lines to type"}},
    {u"platform/ask/Ask messageBox"_s, {1, "the way of all boxes"}},
    {u"platform/widgets/ModalForm showModal"_s, {1, "the way of all forms"}},
    {u"class ModalForm"_s, {1, "the base of all forms"}},
    {u"class AskDialog"_s, {1, "the window of all boxes"}},
    {u"class StartQuestion"_s, {1, "at the start, before the mixer is opened, or without a database"}},
    {u"core/StartQuestion showModal"_s,
     {1, "at the start, before the mixer is opened, or without a database"}},
    {u"core/DatabaseRescue openFile"_s, {1, "at the first start, before the mixer is opened"}},
    {u"screens/PriceWindow MsgBox"_s, {1, "only where another program has changed chemicals meanwhile"}},
    {u"core/frmMain_newLot showModal"_s,
     {1, "no lot is added before a mix is logged; no mix is begun behind the window"}},
    {u"class NewLotWindow"_s, {1, "no lot is added before a mix is logged"}},
    {u"core/frmMain_history showModal"_s,
     {2, "all records, and a formula's changes since a batch: windows with rows of their own"}},
    {u"class ErrorReportList"_s, {1, "stands beside the window and blocks nothing"}},
    {u"class DraftReader"_s, {1, "stands beside the window and blocks nothing"}},
};

}  // namespace

TEST(ModalSites, EachHasARowInTheMatrix) {
    QMap<QString, int> rows;
    for (const ModalThing& thing : MatrixTest::all()) {
        for (const QString& site : thing.sites)
            ++rows[site];
    }
    const QMap<QString, int> sites = sitesInSources();
    EXPECT_GT(sites.size(), 30);
    for (auto site = sites.begin(); site != sites.end(); ++site)
        EXPECT_EQ(rows.value(site.key()) + withoutRow.value(site.key()).first, site.value())
            << str(site.key()) << ": rows, and places in the sources";
    for (auto row = rows.begin(); row != rows.end(); ++row)
        EXPECT_TRUE(sites.contains(row.key())) << str(row.key()) << " is no longer in the sources";
    for (auto site = withoutRow.begin(); site != withoutRow.end(); ++site)
        EXPECT_TRUE(sites.contains(site.key())) << str(site.key()) << " is no longer in the sources";
}
