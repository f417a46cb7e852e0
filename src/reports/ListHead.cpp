#include "reports/ListHead.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportTexts.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr QRgb shadowGrey = 0xFF9AA5B1;
constexpr QRgb paperWhite = 0xFFFFFFFF;

}  // namespace

platform::Section listHead(platform::SectionKind kind, int height, const ListHead& places,
                           const std::vector<platform::Control>& further) {
    const int width = places.boxWidth;
    std::vector<platform::Control> controls{
        platform::box(u"Shape2"_s, 0, 90, width, 540).background(shadowGrey),
        platform::box(u"Shape1"_s, 90, 180, width, 540).background(paperWhite),
        platform::label(u"lblReportTitle"_s, 90, 180, width - 180, 360).points(titlePoints).bold().centre(),
        platform::label(u"lblDate"_s, places.dateLeft, places.dateTop, 1980, 270).points(datePoints),
    };
    controls.insert(controls.end(), further.begin(), further.end());
    return {kind, height, std::move(controls)};
}

void translateListHead(platform::Report& report, const char* captionKey, const char* titleKey) {
    report.setValue(u"lblDate"_s, platform::now());
    report.caption = translated(QLatin1String(captionKey));
    report.setText(u"lblReportTitle"_s, translated(QLatin1String(titleKey)));
}

platform::Control heading(const QString& name, int left, int top, int width) {
    return platform::label(name, left, top, width, 270).points(9).bold();
}

std::vector<platform::Control> headings(std::span<const ListColumn> columns, const QString& prefix, int top) {
    std::vector<platform::Control> controls;
    for (const ListColumn& column : columns) {
        controls.push_back(heading(prefix + QLatin1String(column.name), column.left, top, column.width));
        controls.back().style.align = column.align;
    }
    return controls;
}

void translateHeadings(platform::Report& report, std::span<const ListColumn> columns, const QString& prefix) {
    for (const ListColumn& column : columns) {
        const QString english = QString::fromLatin1(column.heading);
        report.setText(prefix + QLatin1String(column.name),
                       english.isEmpty() ? QString() : translated(english));
    }
}

platform::Section storeFooter() {
    return {platform::SectionKind::PageFooter,
            450,
            {
                platform::field(u"txtStore"_s, 0, 180, 7560, 270).points(9),
                platform::field(u"txtPage"_s, 8370, 180, 2430, 270).points(9).right().asValue("Page"),
            }};
}

void fillStoreFooter(const Context& context, platform::Report& report) {
    report.setText(u"txtStore"_s, platform::deref(context.options).StoreName());
    report.setText(u"txtPage"_s, translated(u"Page"_s) + u' ' + QString::number(report.pageNumber()));
}

}  // namespace sorvanto
