// Each scene ends with the batch in the log, and with nothing done that was not asked for.
#include "BusyTour.h"

#include "Batch.h"
#include "Program.h"
#include "RawDatabase.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QTest>

namespace tour {
namespace {

const QString made = u"Hydrocortisone 1% Cream"_s;
constexpr int quantity = 35;
constexpr int longestMix = 180'000;  // milliseconds

class BusyTour {
public:
    explicit BusyTour(const QString& folder)
        : m_database(QDir(folder).filePath("sorvanto.mdb")),
          m_visitor(QDir(folder).filePath("tour"), u"busy-"_s), m_program(m_visitor, folder) {}

    void run(const QString& scene);

private:
    void startMix();
    void awaitEnd(const QWidget* open);
    void expectSigning();
    void chooseInAList();
    void deleteABatch();
    void typeANote();
    int count(const QString& what) const {
        return RawDatabase(m_database).number(u"SELECT count(*) FROM "_s + what);
    }

    QString m_database;
    Visitor m_visitor;
    Program m_program;
    bool m_signed = false;
};

void BusyTour::startMix() {
    m_visitor.search(u"Hydroc"_s);
    Batch batch(m_visitor, made, quantity);
    batch.announceQuantity();
    m_visitor.tool(u"cmdMake"_s);
    m_visitor.wait(
        u"the formula on the mixer"_s,
        [&] { return m_visitor.find<QAbstractButton>(u"mixerStart"_s).isEnabled(); }, longestMix);
    m_visitor.click(u"mixerStart"_s);
    const auto* stop = m_visitor.window().findChild<QAbstractButton*>(u"mixerStop"_s);
    m_visitor.wait(
        u"the running mix"_s, [&] { return stop && stop->isVisible(); }, longestMix);
    m_visitor.tool(u"cmdLogs"_s);
}

/// open: the dialog that must stay the only one; nullptr for none at all.
void BusyTour::awaitEnd(const QWidget* open) {
    const auto* sign = m_visitor.window().findChild<QAbstractButton*>(u"mixerSign"_s);
    m_visitor.wait(
        u"the card of the mix that waits"_s, [&] { return sign && sign->isVisible(); }, longestMix);
    require(QApplication::activeModalWidget() == open, u"another window came up when the mix ended."_s);
    require(!m_signed, u"the mix was signed in the midst of it."_s);
}

void BusyTour::expectSigning() {
    m_visitor.robot().expectDialog(u"frmInitials"_s, [this](QWidget& dialog) {
        Batch(m_visitor, made, quantity).sign(dialog, Batch::compounder, Batch::verifier);
        m_signed = true;
    });
}

void BusyTour::chooseInAList() {
    m_visitor.robot().expectDialog(u"frmSearchRS"_s, [this](QWidget& list) {
        awaitEnd(&list);
        m_visitor.picture(u"list"_s);
        Visitor::find<platform::RecordGrid>(list, u"TDBList1"_s).selectRow(1);
        Visitor::click(Visitor::find<QWidget>(list, u"cmdOK"_s));
    });
    expectSigning();
    m_visitor.search(u"keto"_s);
}

void BusyTour::deleteABatch() {
    m_visitor.tool(u"cmdLast"_s);
    m_visitor.requireText(u"txtlog_Name"_s, u"Ketoprofen 10% Gel"_s);
    m_visitor.robot().expectBox(u"Delete Ketoprofen 10% Gel ?"_s, u"Yes"_s, [this](QWidget& box) {
        awaitEnd(&box);
        m_visitor.picture(u"delete"_s);
    });
    expectSigning();
    m_visitor.tool(u"cmdDelete"_s);
}

void BusyTour::typeANote() {
    m_visitor.tool(u"cmdEdit"_s);
    auto& notes = m_visitor.find<platform::MemoBox>(u"txtlog_Notes"_s);
    m_visitor.type(u"txtlog_Notes"_s, u"stir well"_s);
    QTest::keyClick(&notes, Qt::Key_Return);
    QTest::keyClicks(&notes, u"and cool"_s);
    awaitEnd(nullptr);
    m_visitor.picture(u"note"_s);
    require(notes.text().contains("stir well"_L1) && notes.text().endsWith("and cool"_L1),
            u"the note reads \"%1\"."_s.arg(notes.text()));
    expectSigning();
    m_visitor.tool(u"cmdSave"_s);
}

void BusyTour::run(const QString& scene) {
    m_program.start();
    const int logged = count(u"Log"_s), formulas = count(u"Formula"_s);
    startMix();
    if (scene == "list"_L1)
        chooseInAList();
    else if (scene == "delete"_L1)
        deleteABatch();
    else
        typeANote();
    m_visitor.settle(longestMix);
    m_visitor.wait(u"the signed batch"_s, [this] { return m_signed; });
    requireSame(u"the number of batches"_s, QString::number(count(u"Log"_s)),
                QString::number(logged + (scene == "delete"_L1 ? 0 : 1)));
    requireSame(u"the number of formulas"_s, QString::number(count(u"Formula"_s)), QString::number(formulas));
    require(m_visitor.find<QAbstractButton>(u"cmdFormulas"_s).isChecked(),
            u"the formulas are not on show."_s);
    m_visitor.requireNoReport();
    m_visitor.tool(u"cmdChemicals"_s);  // open for editing from the start
    m_visitor.tool(u"cmdCancel"_s);
    m_program.leave();
}

}  // namespace

void runBusy(const QString& programFolder, const QString& scene) { BusyTour(programFolder).run(scene); }

}  // namespace tour
