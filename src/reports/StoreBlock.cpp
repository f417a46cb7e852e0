#include "reports/StoreBlock.h"

#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "reports/ReportTexts.h"
#include "shared/basMain.h"

namespace sorvanto {

using platform::trimmed;

std::vector<platform::Control> storeBlock(int right, int down) {
    std::vector<platform::Control> controls{
        platform::box("boxStore", 4590, 630, 5760, 1710),
        platform::field("txtStore", 4860, 810, 5310, 270).bold(),
        platform::field("txtAdd1", 4860, 1080, 5310, 270),
        platform::label("txtCity", 4860, 1350, 5310, 270),
        platform::label("lblPhone", 4860, 1620, 720, 270),
        platform::field("txtPhone", 5580, 1620, 1710, 270).asValue("Phone"),
        platform::label("lblFax", 7470, 1620, 450, 270),
        platform::field("txtFax", 7920, 1620, 2250, 270).asValue("Fax"),
        platform::label("lblDEA", 4860, 1980, 1260, 270),
        platform::field("txtDEA", 6120, 1980, 2160, 270).asValue("Pharmacy #"),
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

void fillStoreBlock(platform::Report& report) {
    for (const char* name : {"boxStore", "txtStore", "txtAdd1", "txtCity", "txtPhone", "lblFax", "txtFax"})
        report.setVisible(name, true);
    clsOptions& options = platform::deref(basMain::Options);
    report.setText("txtStore", options.StoreName());
    report.setText("txtAdd1", options.Address());
    report.setName("txtCity", trimmed(options.City()) + ", " + trimmed(options.State()),
                   "     " + trimmed(options.Zip()));
    report.setText("txtPhone", options.Phone());
    report.setText("txtFax", options.Fax());
    report.setText("txtDEA", options.DEA());
}

}  // namespace sorvanto
