// A record stays alive while a question about it is open, whatever its owner shows by then.
#include "RecordsTest.h"

#include "platform/ask/Ask.h"
#include "records/clsChemical.h"
#include "records/clsFormula.h"
#include "records/clsLog.h"
#include "records/clsPatient.h"

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

/// Does something while the question is open, and answers Yes.
class BusyAsker : public platform::Asker {
public:
    platform::Answer messageBox(const QString&, platform::BoxStyle, const QString&) override {
        meanwhile();
        return platform::Answer::Yes;
    }
    QString inputBox(const QString&, const QString&, const QString&, const platform::LineGuide&) override {
        return {};
    }
    QString openFile(const QString&, const QString&) override { return {}; }
    void showModal(QObject&, const std::function<void()>&) override {}

    std::function<void()> meanwhile;
};

class HeldRecordTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        platform::setAsker(&busy);
    }
    void TearDown() override {
        platform::setAsker(&asker);
        RecordsTest::TearDown();
    }
    /// The owner shows another record while the question is open: the one asked about lives on.
    template <class Record, class Delete>
    void expectHeld(std::shared_ptr<Record> record, Delete remove) {
        const std::weak_ptr<Record> asked = record;
        bool held = false;
        busy.meanwhile = [&] {
            record = std::make_shared<Record>();
            held = !asked.expired();
        };
        remove(record);
        EXPECT_TRUE(held);
        EXPECT_TRUE(asked.expired()) << "and no longer than that";
    }
    BusyAsker busy;
};

TEST_F(HeldRecordTest, ABatch) {
    expectHeld(std::make_shared<clsLog>(), [](const clsLogPtr& log) { clsLog().deleteLog(log); });
}

TEST_F(HeldRecordTest, AFormula) {
    expectHeld(std::make_shared<clsFormula>(),
               [](const clsFormulaPtr& formula) { clsFormula().deleteFormula(formula, false); });
}

TEST_F(HeldRecordTest, AChemical) {
    expectHeld(std::make_shared<clsChemical>(),
               [](const clsChemicalPtr& chemical) { clsChemical().deleteChemical(chemical, false); });
}

TEST_F(HeldRecordTest, APatient) {
    expectHeld(std::make_shared<clsPatient>(),
               [](const clsPatientPtr& patient) { clsPatient().deletePatient(patient, false); });
}

TEST_F(HeldRecordTest, ACopiedBatchStaysAsItIs) {
    const auto log = std::make_shared<clsLog>();
    log->log_Lot = u"AB1"_s;
    log->log_Mix->loadXML(u"<CustomMix PreGrind=\"1\"/>"_s);
    const clsLogPtr copied = log->copy();
    log->log_Lot = u"AB2"_s;
    log->log_Mix->loadXML(u"<CustomMix PreGrind=\"2\"/>"_s);
    EXPECT_EQ(copied->log_Lot, u"AB1"_s);
    EXPECT_TRUE(copied->log_Mix->xml().contains("PreGrind=\"1\""_L1));
}

}  // namespace
