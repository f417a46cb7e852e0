// Formula documents to programmes, and what the mixer control says of those it can't run.
#include "MemoryLine.h"

#include "mixer/LoadedFormula.h"
#include "mixer/MixTables.h"
#include "mixer/ResultsDocument.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using test::formulaDocument;

namespace {

PanelMessage refusal(const platform::XmlDocumentPtr& document) {
    const auto read = readFormula(document, false);
    const auto* message = std::get_if<PanelMessage>(&read);
    return message ? *message : PanelMessage{};
}

LoadedFormula loaded(const platform::XmlDocumentPtr& document, bool overrideSpeed = false) {
    auto read = readFormula(document, overrideSpeed);
    EXPECT_TRUE(std::holds_alternative<LoadedFormula>(read));
    return std::get<LoadedFormula>(std::move(read));
}

QString mix(const QString& steps, const QString& attributes = uR"(PreGrind="2" FreeSpin="3")"_s) {
    return u"<CustomMix %1>%2</CustomMix>"_s.arg(attributes, steps);
}

QString step(const char* lift, const char* speed, const char* time, const char* cycles) {
    return uR"(<Mix LiftRPM="%1" MixRPM="%2" MixTime="%3" Cycles="%4"/>)"_s.arg(lift, speed, time, cycles);
}

const QString goodStep = step("1200", "1200", "00:10:00", "0");

}  // namespace

TEST(LoadedFormula, CustomMixStepByStep) {
    const auto formula = loaded(formulaDocument(mix(goodStep + step("24", "12", "00:00:00", "255"))));
    EXPECT_EQ(formula.name, "Hydrocortisone 1% Cream");
    EXPECT_EQ(formula.quantity, 250);
    EXPECT_EQ(formula.programme,
              (protocol::Programme{{}, 9, 7, 250, 2, 3, {{1200, 1200, 600, 0}, {24, 12, 0, 255}}}));
    EXPECT_TRUE(formula.warnings.empty());
}

TEST(LoadedFormula, TheDocumentIsACopy) {
    const auto document = formulaDocument(mix(goodStep));
    const auto formula = loaded(document);
    document->selectSingleNode("//Formula/Name").setText("changed");
    EXPECT_EQ(formulaName(formula.document), "Hydrocortisone 1% Cream");
}

TEST(LoadedFormula, PresetTakesItsOwnStepsAndNotTheStoredOnes) {
    const auto formula = loaded(formulaDocument(mix(goodStep), 3));
    EXPECT_EQ(formula.programme.steps, presetSteps(3, 7));
    EXPECT_EQ(formula.programme.preGrind, 2);
    EXPECT_TRUE(loaded(formulaDocument(mix(step("x", "x", "x", "x")), 3)).warnings.empty());
}

TEST(LoadedFormula, SpeedAboveTheJarsIsWarnedOfAndKept) {
    const auto document = formulaDocument(mix(goodStep + step("1200", "3000", "00:01:00", "0")), 9, 9, 1000);
    const auto formula = loaded(document);
    EXPECT_EQ(formula.programme.steps[1].mixRpm, 3000);
    ASSERT_EQ(formula.warnings.size(), 1U);
    EXPECT_EQ(PanelTexts()(formula.warnings[0]),
              "Step 2 mixes with 3000 RPM. Up to 1992 are recommended for this jar.");
    EXPECT_TRUE(loaded(document, true).warnings.empty()) << "the recommendation is overridden";
    EXPECT_TRUE(loaded(formulaDocument(mix(step("1200", "1992", "00:01:00", "0")), 9, 9)).warnings.empty());
}

TEST(LoadedFormula, WhatCanNotBeRunIsSaid) {
    const QString seventeen = goodStep.repeated(17);
    const struct {
        platform::XmlDocumentPtr document;
        PanelText text;
    } cases[] = {
        {nullptr, PanelText::NoFormula},
        {platform::XmlDocument::create(), PanelText::NoFormula},
        {formulaDocument(mix(goodStep), 0), PanelText::Combination},
        {formulaDocument(mix(goodStep), -1), PanelText::NoMixType},
        {formulaDocument(mix(goodStep), 10), PanelText::NoMixType},
        {formulaDocument(mix(goodStep), 9, 0), PanelText::NoJar},
        {formulaDocument(mix(goodStep), 3, 10), PanelText::NoJar},
        {formulaDocument(mix(goodStep), 9, 7, 32768), PanelText::NoFormula},
        {formulaDocument(mix(goodStep), 9, 7, -32769), PanelText::NoFormula},
        {formulaDocument(mix("")), PanelText::NoSteps},
        {formulaDocument(""), PanelText::NoSteps},
        {formulaDocument(mix(seventeen)), PanelText::TooManySteps},
        {formulaDocument(mix(step("", "1200", "00:10:00", "0"))), PanelText::StepUnreadable},
        {formulaDocument(mix(step("1200", "fast", "00:10:00", "0"))), PanelText::StepUnreadable},
        {formulaDocument(mix(step("1200", "1200", "ten", "0"))), PanelText::StepUnreadable},
        {formulaDocument(mix(R"(<Mix LiftRPM="1200"/>)")), PanelText::StepUnreadable},
        {formulaDocument(mix(step("1200", "1200", "00:00:00", "0"))), PanelText::StepTimeOrCycles},
        {formulaDocument(mix(step("1200", "1200", "00:00:01", "1"))), PanelText::StepTimeOrCycles},
        {formulaDocument(mix(step("1200", "9999", "00:10:00", "0"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("2904", "1200", "00:10:00", "0"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("0", "1200", "00:10:00", "0"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("1200", "0", "00:10:00", "0"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("2881", "1200", "00:10:00", "0"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("1200", "3001", "00:10:00", "0"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("1200", "1200", "00:10:00", "-1"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("1200", "1200", "01:00:01", "0"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(step("1200", "1200", "00:00:00", "256"))), PanelText::StepOutOfRange},
        {formulaDocument(mix(goodStep, R"(PreGrind="two" FreeSpin="3")")), PanelText::SettingsUnreadable},
        {formulaDocument(mix(goodStep, R"(PreGrind="" FreeSpin="3")")), PanelText::SettingsUnreadable},
        {formulaDocument(mix(goodStep, R"(PreGrind="16" FreeSpin="3")")), PanelText::SettingsUnreadable},
        {formulaDocument(mix(goodStep, R"(PreGrind="-1" FreeSpin="3")")), PanelText::SettingsUnreadable},
        {formulaDocument(mix(goodStep, R"(PreGrind="2" FreeSpin="0")")), PanelText::SettingsUnreadable},
        {formulaDocument(mix(goodStep, R"(PreGrind="2" FreeSpin="17")"), 3), PanelText::SettingsUnreadable},
    };
    for (const auto& one : cases)
        EXPECT_EQ(refusal(one.document).text, one.text)
            << (one.document ? one.document->xml().toStdString() : "nothing");
    EXPECT_EQ(PanelTexts()(refusal(formulaDocument(mix(seventeen)))),
              "The programme has 17 steps. The mixer takes 16 at most. Delete steps on the formula screen.");
}

TEST(LoadedFormula, TheBordersCanBeRun) {
    const QString sixteen =
        step("2880", "3000", "01:00:00", "0") + step("1", "1", "00:00:00", "255") + goodStep.repeated(14);
    const auto highest = loaded(formulaDocument(mix(sixteen, R"(PreGrind="15" FreeSpin="16")"), 9, 9, 32767));
    ASSERT_EQ(highest.programme.steps.size(), 16U);
    EXPECT_EQ(highest.programme.steps[0], (protocol::Step{2880, 3000, 3600, 0}));
    EXPECT_EQ(highest.programme.steps[1], (protocol::Step{1, 1, 0, 255}));
    EXPECT_EQ(highest.programme.preGrind, 15);
    EXPECT_EQ(highest.programme.freeSpin, 16);
    EXPECT_EQ(highest.programme.quantity, 32767);
    const auto lowest = loaded(formulaDocument(mix(goodStep, R"(PreGrind="0" FreeSpin="1")"), 1, 1, -32768));
    EXPECT_EQ(lowest.programme.preGrind, 0);
    EXPECT_EQ(lowest.programme.freeSpin, 1);
    EXPECT_EQ(lowest.programme.quantity, -32768);
    EXPECT_EQ(loaded(formulaDocument({}, 8, 1)).programme.type, 8);
}

TEST(LoadedFormula, MissingSettingsAreTheUsualOnes) {
    const auto formula = loaded(formulaDocument(mix(goodStep, "")));
    EXPECT_EQ(formula.programme.preGrind, 0);
    EXPECT_EQ(formula.programme.freeSpin, 1);
}

TEST(ResultsDocument, AsTheLogReadsIt) {
    const auto document =
        makeResultsDocument({1, "2.1", "SV0426"}, {"3FA21C09", 12, 7, 9, 61, false, 2, 14952});
    EXPECT_EQ(document->xml(),
              "<Results Value=\"SV0426\"><Size Value=\"300 ml\"/><Type Value=\"Custom\"/>"
              "<LiftingCycles Value=\"61\"/><Interuption Value=\"A\"/><PreGrind Value=\"2\"/>"
              "<PreparationNumber Value=\"0012\"/><TotalMixingRevolutions Value=\"14952\"/>"
              "<HardwareVersion Value=\"2.1\"/></Results>");
    EXPECT_EQ(lotOf(document), "SV04260012");
}

TEST(ResultsDocument, StoppedAndBeyondFourDigits) {
    const auto document =
        makeResultsDocument({1, "SIM-2.1", "SV0426"}, {"3FA21C09", 12345, 1, 3, 0, true, 0, 0});
    EXPECT_EQ(platform::nodeValue(*document, "//Results/Interuption"), "U");
    EXPECT_EQ(platform::nodeValue(*document, "//Results/HardwareVersion"), "SIM-2.1");
    EXPECT_EQ(lotOf(document), "SV042612345");
}

TEST(ResultsDocument, LotOfLessThanADocument) {
    EXPECT_EQ(lotOf(nullptr), "");
    for (const char* xml : {"<Results/>", "<Results Value=\"A\"/>", "<Other/>",
                            "<Results Value=\"A\"><PreparationNumber/></Results>"}) {
        const auto document = platform::XmlDocument::create();
        ASSERT_TRUE(document->loadXML(xml));
        EXPECT_EQ(lotOf(document), "") << xml;
    }
}
