#include "reports/StoreBlock.h"

#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "reports/ReportTexts.h"
#include "shared/Context.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::trimmed;

std::vector<platform::Control> storeBlock(int right, int down) {
    std::vector<platform::Control> controls{
        platform::box(u"boxStore"_s, 4590, 630, 5760, 1710),
        platform::field(u"txtStore"_s, 4860, 810, 5310, 270).bold(),
        platform::field(u"txtAdd1"_s, 4860, 1080, 5310, 270),
        platform::label(u"txtCity"_s, 4860, 1350, 5310, 270),
        platform::label(u"lblPhone"_s, 4860, 1620, 720, 270),
        platform::field(u"txtPhone"_s, 5580, 1620, 1710, 270).asValue("Phone"),
        platform::label(u"lblFax"_s, 7470, 1620, 450, 270),
        platform::field(u"txtFax"_s, 7920, 1620, 2250, 270).asValue("Fax"),
        platform::label(u"lblDEA"_s, 4860, 1980, 1260, 270),
        platform::field(u"txtDEA"_s, 6120, 1980, 2160, 270).asValue("Pharmacy #"),
    };
    for (platform::Control& control : controls) {
        control.left += right;
        control.top += down;
        control.points(8.5);
    }
    return controls;
}

void translateStoreBlock(platform::Report& report) {
    translateCaptions(report, {{"lblPhone", "Phone"}, {"lblFax", "Fax"}, {"lblDEA", "Pharmacy #"}});
}

void fillStoreBlock(const Context& context, platform::Report& report) {
    for (const QString& name :
         {u"boxStore"_s, u"txtStore"_s, u"txtAdd1"_s, u"txtCity"_s, u"txtPhone"_s, u"lblFax"_s, u"txtFax"_s})
        report.setVisible(name, true);
    clsOptions& options = platform::deref(context.options);
    report.setText(u"txtStore"_s, options.StoreName());
    report.setText(u"txtAdd1"_s, options.Address());
    report.setName(u"txtCity"_s, trimmed(options.City()) + u", "_s + trimmed(options.State()),
                   u"     "_s + trimmed(options.Zip()));
    report.setText(u"txtPhone"_s, options.Phone());
    report.setText(u"txtFax"_s, options.Fax());
    report.setText(u"txtDEA"_s, options.DEA());
}

}  // namespace sorvanto
