#include "reports/ListHead.h"

#include "platform/basic/Dates.h"
#include "reports/ReportTexts.h"
#include "shared/Translator.h"

namespace sorvanto {
namespace {

constexpr QRgb shadowGrey = 0xFF9AA5B1;
constexpr QRgb paperWhite = 0xFFFFFFFF;

}  // namespace

platform::Section listHead(platform::SectionKind kind, int height, const ListHead& places,
                           const std::vector<platform::Control>& further) {
    const int width = places.boxWidth;
    std::vector<platform::Control> controls{
        platform::box("Shape2", 0, 90, width, 540).background(shadowGrey),
        platform::box("Shape1", 90, 180, width, 540).background(paperWhite),
        platform::label("lblReportTitle", 90, 180, width - 180, 360).points(titlePoints).bold().centre(),
        platform::label("lblDate", places.dateLeft, places.dateTop, 1980, 270).points(datePoints),
    };
    controls.insert(controls.end(), further.begin(), further.end());
    return {kind, height, std::move(controls)};
}

void translateListHead(platform::Report& report, const char* captionKey, const char* titleKey) {
    report.setValue("lblDate", platform::now());
    report.caption = translated(captionKey);
    report.setText("lblReportTitle", translated(titleKey));
}

platform::Control heading(const QString& name, int left, int top, int width) {
    return platform::label(name, left, top, width, 270).points(9).bold();
}

}  // namespace sorvanto
