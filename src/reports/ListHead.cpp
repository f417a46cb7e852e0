#include "reports/ListHead.h"

#include "platform/basic/Dates.h"
#include "reports/ReportTexts.h"
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

}  // namespace sorvanto
