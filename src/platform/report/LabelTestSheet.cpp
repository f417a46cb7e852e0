// The test sheet is a report like any other: one page header as high as the paper.
#include "platform/report/LabelTestSheet.h"

#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace platform {

std::unique_ptr<Report> labelTestSheet(const ReportDefinition& labels, const QString& caption) {
    if (!labels.stock)
        throw RuntimeError(error::invalidProcedureCall, u"The report is not for labels"_s);
    const LabelStock& stock = *labels.stock;
    Section sheet{SectionKind::PageHeader, labels.paperHeight, {}};
    sheet.controls.push_back(label(u"caption"_s, stock.left, 240, 8000, 300, caption).bold());
    for (int row = 0; row < stock.rows; ++row) {
        for (int column = 0; column < stock.columns; ++column) {
            const int number = row * stock.columns + column + 1;
            const int x = stock.left + column * stock.across;
            const int y = stock.top + row * stock.down;
            const QString name = QString::number(number);
            sheet.controls.push_back(box(u"box"_s + name, x, y, stock.width, stock.height));
            // A cross in the middle shows a turned sheet, which the outlines alone would hide.
            sheet.controls.push_back(line(u"cross"_s + name, x + stock.width / 2 - 90, y + stock.height / 2,
                                          x + stock.width / 2 + 90));
            sheet.controls.push_back(
                box(u"mast"_s + name, x + stock.width / 2, y + stock.height / 2 - 90, 0, 180));
            sheet.controls.push_back(label(u"number"_s + name, x + 120, y + 90, 800, 300, name));
        }
    }
    ReportDefinition definition;
    definition.name = u"LabelTestSheet"_s;
    definition.margins = {0, 0, 0, 0};
    definition.paperWidth = labels.paperWidth;
    definition.paperHeight = labels.paperHeight;
    definition.stock = stock;
    definition.sections.push_back(std::move(sheet));
    auto report = std::make_unique<Report>(std::move(definition));
    report->caption = caption;
    return report;
}

}  // namespace platform
