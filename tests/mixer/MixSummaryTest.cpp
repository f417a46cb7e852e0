// Which batch it is in a line, and what was planned beside what was done.
#include "mixer/MixSummary.h"
#include "mixer/BatchPassport.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

platform::XmlDocumentPtr document(const QString& xml) {
    const auto made = platform::XmlDocument::create();
    EXPECT_TRUE(made->loadXML(xml));
    return made;
}

platform::XmlDocumentPtr formula(const QString& lastTime = u"00:02:00"_s, const QString& cycles = u"0"_s) {
    return document(
        u"<Formula><ID>1</ID><Name>Magic Mouthwash</Name><Type>9</Type><Size>7</Size><QTY>240</QTY>"
        "<Make>240</Make><CustomMix PreGrind=\"0\" FreeSpin=\"1\">"
        "<Mix LiftRPM=\"1200\" MixRPM=\"600\" MixTime=\"00:00:30\" Cycles=\"0\"/>"
        "<Mix LiftRPM=\"1200\" MixRPM=\"1200\" MixTime=\"00:01:30\" Cycles=\"0\"/>"
        "<Mix LiftRPM=\"960\" MixRPM=\"1800\" MixTime=\"%1\" Cycles=\"%2\"/>"
        "</CustomMix></Formula>"_s.arg(lastTime, cycles));
}

platform::XmlDocumentPtr results(const QString& letter, const QString& turns) {
    return document(u"<Results Value=\"SV26\"><Interuption Value=\"%1\"/>"
                    "<TotalMixingRevolutions Value=\"%2\"/></Results>"_s.arg(letter, turns));
}

protocol::Status reachedAt(int step, int left, int total) {
    protocol::Status status;
    status.step = step;
    status.steps = 3;
    status.secondsLeft = left;
    status.secondsTotal = total;
    return status;
}

using Side = MixSummary::Side;

}  // namespace

TEST(BatchPassport, NamesWhatIsKnown) {
    const PassportWords words{u"%1 in %2"_s, u"lot %1"_s};
    BatchPassport batch = BatchPassport::of(formula(), u"MLS"_s);
    EXPECT_EQ(batch.line(words), u"Magic Mouthwash \u00B7 240 MLS in 300 ml"_s);
    batch.lot = u"SV260013"_s;
    EXPECT_EQ(batch.line(words), u"Magic Mouthwash \u00B7 240 MLS in 300 ml \u00B7 lot SV260013"_s);
    batch.unit.clear();
    batch.name = u"100% %2"_s;
    batch.lot.clear();
    EXPECT_EQ(batch.line(words), u"100% %2 \u00B7 240 in 300 ml"_s);
    batch.jar.clear();
    EXPECT_EQ(batch.line(words), u"100% %2 \u00B7 240"_s);
    EXPECT_EQ(BatchPassport::of(nullptr, u"MLS"_s).line(words), QString());
}

TEST(MixSummary, AStoppedMixHasTheStepsAndTimeThatWereSeen) {
    const MixSummary summary = mixSummary(formula(), results(u"U"_s, u"1760"_s), reachedAt(2, 137, 240));
    EXPECT_EQ(summary.planned, (Side{3, 240, 5700}));
    EXPECT_EQ(summary.done, (Side{2, 103, 1760}));
    EXPECT_EQ(summary.interrupted, true);
}

TEST(MixSummary, WhatWasNotSeenIsNotKnown) {
    const MixSummary summary = mixSummary(formula(), results(u"U"_s, u"1760"_s), std::nullopt);
    EXPECT_EQ(summary.done, (Side{std::nullopt, std::nullopt, 1760}));
    const MixSummary none = mixSummary(nullptr, nullptr, std::nullopt);
    EXPECT_EQ(none.planned, Side());
    EXPECT_EQ(none.done, Side());
    EXPECT_EQ(none.interrupted, std::nullopt);
    const MixSummary odd = mixSummary(formula(), results(u"X"_s, u"many"_s), reachedAt(2, 137, 240));
    EXPECT_EQ(odd.done, Side());
    EXPECT_EQ(odd.interrupted, std::nullopt);
}

TEST(MixSummary, AMixThatRanToItsEndHasDoneItsPlan) {
    const MixSummary summary = mixSummary(formula(), results(u"A"_s, u"5700"_s), std::nullopt);
    EXPECT_EQ(summary.done, (Side{3, 240, 5700}));
    EXPECT_EQ(summary.interrupted, false);
}

TEST(MixSummary, StepsByCyclesHaveNoTimeOfTheirOwn) {
    const auto byCycles = formula(u"00:00:00"_s, u"40"_s);
    EXPECT_EQ(mixSummary(byCycles, nullptr, std::nullopt).planned, (Side{3, std::nullopt, std::nullopt}));
    EXPECT_EQ(mixSummary(byCycles, results(u"U"_s, u"9"_s), reachedAt(1, 90, 100)).planned,
              (Side{3, 100, std::nullopt}))
        << "the mixer says how long it takes";
}
