#include "screens/MixList.h"

#include "platform/widgets/ReportList.h"
#include "platform/xml/XmlDocument.h"

namespace sorvanto {

void listMixSteps(const platform::XmlDocument& document, platform::ReportList& list) {
    for (const platform::XmlNode& step : document.getElementsByTagName("Mix")) {
        QStringList cells{step.attribute("LiftRPM")};
        try {
            for (const char* attribute : {"MixRPM", "MixTime", "Cycles"})
                cells << step.attribute(attribute);
        } catch (...) {
            list.addRow(cells);
            throw;
        }
        list.addRow(cells);
    }
}

}  // namespace sorvanto
