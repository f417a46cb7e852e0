#include "reports/rptChemicals.h"

#include "platform/basic/Dates.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/ReportTexts.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Control;
using platform::field;
using platform::line;
using platform::TextAlign;
using platform::TextKind;

constexpr ListColumn chemicalColumns[] = {
    {"chm_Name", "Name", 0, 2700, TextAlign::Left, TextKind::Name},
    {"chm_Form", "Form", 2700, 1260, TextAlign::Centre},
    {"chm_Units", "Unit", 3960, 900, TextAlign::Centre, TextKind::Value},
    {"chm_NDC", "NDC", 4860, 1170, TextAlign::Centre, TextKind::Value},
    {"chm_Lot", "Lot", 6030, 1170, TextAlign::Centre, TextKind::Value},
    {"chm_Cost", "Cost", 7200, 900, TextAlign::Centre},
    {"chm_AWP", "AWP", 8100, 810, TextAlign::Centre},
    {"chm_Supplier", "Supplier", 8910, 1890},
};

platform::Section chemicalHead() {
    platform::Section section{platform::SectionKind::PageHeader, 375, headings(chemicalColumns, u"lbl"_s)};
    section.controls.push_back(line(u"Line5"_s, 0, 270, 10800));
    return section;
}

platform::Section chemicalRow() {
    platform::Section section{platform::SectionKind::Detail, 465, {}};
    for (const ListColumn& column : chemicalColumns) {
        Control& text = section.controls.emplace_back(
            field(u"txtChemical_"_s + QLatin1String(column.name), column.left, 90, column.width, 270)
                .bound(QLatin1String(column.name))
                .font(detailFamily, 9));
        text.textKind = column.kind;
        text.title = QLatin1String(column.heading);
        text.style.align = column.align;
    }
    section.controls.front().bold();
    section.controls.push_back(line(u"Line6"_s, 90, 450, 10890));
    return section;
}

platform::ReportDefinition chemicalList() {
    platform::ReportDefinition definition;
    definition.name = u"rptChemicals"_s;
    definition.sections = {
        listHead(platform::SectionKind::ReportHeader, 1005,
                 {.boxWidth = 5130, .dateLeft = 8370, .dateTop = 180}, {line(u"Line4"_s, 0, 900, 10800)}),
        chemicalHead(),
        chemicalRow(),
        {platform::SectionKind::PageFooter,
         240,
         {field(u"txtPage"_s, 9630, 0, 810, 270).points(7.5).right().asValue("Page")}},
        {platform::SectionKind::ReportFooter, 510, {}},
    };
    return definition;
}

}  // namespace

rptChemicals::rptChemicals(Context& context) : Report(chemicalList()), m_context(context) {}

void rptChemicals::setChemicals(const platform::RecordsetPtr& chemicals) {
    translateForm();
    fileName = reportFileName("Chemicals Report", {}, platform::now().date());
    setRows(chemicals);
}

void rptChemicals::translateForm() {
    translateListHead(*this, "Chemicals Report", "Chemical List - Sorvanto");
    translateHeadings(*this, chemicalColumns, u"lbl"_s);
}

void rptChemicals::reportStart() {
    setFormat(u"txtChemical_chm_AWP"_s, optionsPricePicture(m_context));
    setFormat(u"txtChemical_chm_Cost"_s, optionsPricePicture(m_context));
}

void rptChemicals::pageFooterFormat() {
    setText(u"txtPage"_s, translated(u"Page"_s) + u" "_s + QString::number(pageNumber()));
}

}  // namespace sorvanto
