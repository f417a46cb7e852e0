// Every control of the eight reports at its place in twips, and the paper around them.
#include "Golden.h"
#include "ReportTest.h"
#include "reports/rptChemicals.h"
#include "reports/rptFormula.h"
#include "reports/rptJarUsage.h"
#include "reports/rptLogAvery8160.h"
#include "reports/rptLogFormula.h"
#include "reports/rptLogReport.h"
#include "reports/rptPatient.h"
#include "reports/rptRX8160.h"

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class PlacesTest : public ReportTest {};

const char* nameOf(SectionKind kind) {
    static const char* const names[] = {"report header", "page header",   "group header", "detail",
                                        "group footer",  "report footer", "page footer"};
    return names[static_cast<int>(kind)];
}

const char* nameOf(ControlKind kind) {
    static const char* const names[] = {"label", "field", "line", "box", "bars"};
    return names[static_cast<int>(kind)];
}

/// Sections as the definition lists them, their controls from top to bottom.
QString places(const ReportDefinition& definition) {
    QString text;
    for (const Section& section : definition.sections) {
        text += u"%1 %2\n"_s.arg(nameOf(section.kind)).arg(section.height);
        std::vector<Control> controls = section.controls;
        std::sort(controls.begin(), controls.end(), [](const Control& a, const Control& b) {
            return std::tie(a.top, a.left, a.name) < std::tie(b.top, b.left, b.name);
        });
        for (const Control& c : controls)
            text += u"  %1 %2 %3 %4 %5 %6\n"_s.arg(nameOf(c.kind), c.name)
                        .arg(c.left)
                        .arg(c.top)
                        .arg(c.width)
                        .arg(c.height);
    }
    return text;
}

void expectMargins(const ReportDefinition& definition, int left, int right, int top, int bottom) {
    EXPECT_EQ(definition.margins.left, left);
    EXPECT_EQ(definition.margins.right, right);
    EXPECT_EQ(definition.margins.top, top);
    EXPECT_EQ(definition.margins.bottom, bottom);
    EXPECT_EQ(definition.paperWidth, 12240);
    EXPECT_EQ(definition.paperHeight, 15840);
}

}  // namespace

TEST_F(PlacesTest, Worksheet) {
    const rptFormula report(context);
    support::expectGolden("reports/worksheet_places.txt", places(report.definition()));
    expectMargins(report.definition(), 360, 360, 360, 720);
    EXPECT_EQ(report.previewPlace.width, 0.8);
    EXPECT_EQ(report.previewPlace.height, 0.95);
    EXPECT_EQ(report.previewPlace.top, 50);
    EXPECT_EQ(report.control("txtTitle").style.points, 15.75);
    EXPECT_TRUE(report.control("txtTitle").style.bold);
    EXPECT_EQ(report.control("txtTitle").style.background, qRgb(0xC0, 0xC0, 0xC0));
    EXPECT_EQ(report.control("txtchm_Name").style.points, 8.25);
    EXPECT_EQ(report.control("txtfrm_Qty").style.align, TextAlign::Right);
    EXPECT_EQ(report.control("txtchm_QTY").style.align, TextAlign::Right);
    EXPECT_EQ(str(report.control("lblWarning").text),
              "Appropriate References Should\nBe Consulted.\nSafety And Efficacy Of These\n"
              "Formulas Are The Responsibility Of\nThe Compounding Pharmacist.\n");
    EXPECT_EQ(str(report.control("lblchm_Cost").text), "Est Cost");
    EXPECT_EQ(str(report.control("lblchm_Name").text), "Chemical Name");
    EXPECT_EQ(str(report.control("lblchm_Notes").text), "Note");
    EXPECT_EQ(str(report.control("lblExpDate").text), "Exp Date:");
}

TEST_F(PlacesTest, FormulaLog) {
    const rptLogFormula report(context);
    support::expectGolden("reports/formula_log_places.txt", places(report.definition()));
    expectMargins(report.definition(), 360, 360, 360, 720);
    EXPECT_EQ(report.previewPlace.width, 0.8);
    EXPECT_EQ(report.previewPlace.height, 0.95);
    EXPECT_EQ(report.previewPlace.top, 50);
}

TEST_F(PlacesTest, BatchLabels) {
    const rptLogAvery8160 report(context);
    support::expectGolden("reports/batch_labels_places.txt", places(report.definition()));
    expectMargins(report.definition(), 0, 0, 720, 720);
    EXPECT_EQ(report.definition().detailColumns, 3);
    EXPECT_EQ(str(report.caption), "Avery 8160 Log Label");
    EXPECT_EQ(str(report.control("lbllog_LotbarCode").text), "0303A0000100");
    EXPECT_EQ(report.control("txtlog_Lot").style.points, 8.5);
    EXPECT_TRUE(report.control("txtfrm_Name").style.bold);
    EXPECT_FALSE(report.control("txtfrm_Strength").style.bold);
}

TEST_F(PlacesTest, PrescriptionLabels) {
    const rptRX8160 report(context);
    support::expectGolden("reports/prescription_labels_places.txt", places(report.definition()));
    expectMargins(report.definition(), 0, 0, 720, 720);
    EXPECT_EQ(report.definition().detailColumns, 3);
    for (const char* small : {"txtPharmacy", "txtContact"}) {
        EXPECT_EQ(report.control(small).style.points, 6);
        EXPECT_EQ(report.control(small).style.align, TextAlign::Centre);
    }
    for (const char* large : {"txtDrug", "txtQTY"}) {
        EXPECT_EQ(report.control(large).style.points, 8.5);
        EXPECT_TRUE(report.control(large).style.bold);
    }
    EXPECT_EQ(report.control("txtDoctor").style.points, 7);
}

TEST_F(PlacesTest, LogReport) {
    const rptLogReport report(context);
    support::expectGolden("reports/log_report_places.txt", places(report.definition()));
    expectMargins(report.definition(), 720, 720, 720, 720);
    EXPECT_EQ(report.control("txtName").style.points, 14.5);
    EXPECT_TRUE(report.control("txtName").style.bold);
    EXPECT_EQ(report.control("txtlog_Lot").style.points, 9);
    EXPECT_EQ(report.control("txtPage").style.align, TextAlign::Right);
    EXPECT_EQ(report.control("txtTotalCost").style.align, TextAlign::Right);
    EXPECT_EQ(str(report.control("txtTotalCost").text), "0.00");
}

TEST_F(PlacesTest, JarUsage) {
    const rptJarUsage report(context);
    support::expectGolden("reports/jar_usage_places.txt", places(report.definition()));
    expectMargins(report.definition(), 720, 720, 720, 720);
    for (const char* name : {"txtJarSize", "txtUsed"}) {
        EXPECT_EQ(report.control(name).style.points, 14.5);
        EXPECT_TRUE(report.control(name).style.bold);
    }
    EXPECT_EQ(report.control("txtUsed").style.align, TextAlign::Right);
}

TEST_F(PlacesTest, Chemicals) {
    const rptChemicals report(context);
    support::expectGolden("reports/chemicals_places.txt", places(report.definition()));
    expectMargins(report.definition(), 720, 720, 720, 720);
    for (const char* column : {"Name", "Form", "Units", "NDC", "Lot", "Cost", "AWP", "Supplier"}) {
        const Control& field = report.control(u"txtChemical_chm_"_s + column);
        const bool left = field.column == "chm_Name" || field.column == "chm_Supplier";
        EXPECT_EQ(str(field.column), str(u"chm_"_s + column));
        EXPECT_EQ(field.style.align, left ? TextAlign::Left : TextAlign::Centre) << column;
        EXPECT_EQ(field.style.bold, field.column == "chm_Name") << column;
        EXPECT_EQ(field.style.points, 9) << column;
    }
}

TEST_F(PlacesTest, Patient) {
    const rptPatient report(context);
    support::expectGolden("reports/patient_places.txt", places(report.definition()));
    expectMargins(report.definition(), 720, 720, 720, 720);
    EXPECT_EQ(str(report.control("txtPatientID").column), "Patient.PatientID");
    EXPECT_EQ(report.control("txtTotalPrice").style.align, TextAlign::Right);
    EXPECT_EQ(str(report.control("txtTotalPrice").text), "0.00");
}
