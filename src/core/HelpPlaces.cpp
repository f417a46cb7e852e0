#include "core/HelpPlaces.h"

#include <QWidget>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr HelpPlace helpTable[] = {
    // the screens, and what stands beside them
    {"frmFormula", "README.md#formulas"},
    {"frmCurrFormula", "README.md#making-a-batch"},
    {"frmChemical", "README.md#chemicals"},
    {"frmLog", "README.md#the-log"},
    {"frmPatient", "README.md#patients"},
    {"frmSorvanto", "batch.md"},
    {"mixerProblem", "mixer-stops.md"},
    {"mixerOffers", "mixer-stops.md"},
    {"recordList", "README.md#finding-a-record"},
    {"RecordListPane", "README.md#finding-a-record"},
    {"searchBox", "README.md#finding-a-record"},
    {"draftStrip", "README.md#text-that-is-not-saved-yet"},
    {"changeStrip", "server.md#working-together"},
    {"errorStrip", "went-wrong.md#the-strip-below"},
    // windows
    {"frmSearchRS", "README.md#finding-a-record"},
    {"frmMake", "README.md#making-a-batch"},
    {"frmInitials", "signing.md"},
    {"frmReportDate", "months-end.md"},
    {"frmSelPrint", "labels.md"},
    {"LabelOffsetDialog", "labels.md"},
    {"PreviewWindow", "README.md#paper-and-spreadsheets"},
    {"frmOptions", "first-day.md"},
    {"ServerDialog", "server.md#each-bench"},
    {"frmWizard", "README.md#the-first-start"},
    {"frmAbout", "README.md"},
    {"HealthPage", "went-wrong.md#the-health-page"},
    {"TraceWindow", "where-did-it-go.md"},
    {"HistoryWindow", "history.md"},
    {"NewLotWindow", "new-lot.md"},
    {"RepricingWindow", "new-lot.md#recalculate"},
    {"PriceWindow", "prices.md"},
    {"HistoryFileWindow", "history.md"},
    {"StartQuestion", "went-wrong.md#the-database-cant-be-opened"},
    {"ErrorReportList", "went-wrong.md#the-strip-below"},
    {"DraftReader", "README.md#text-that-is-not-saved-yet"},
};

QString placeNamed(const QString& name) {
    for (const HelpPlace& each : helpTable) {
        if (name == QLatin1String(each.name))
            return QString::fromLatin1(each.place);
    }
    return {};
}

}  // namespace

std::span<const HelpPlace> helpPlaces() { return helpTable; }

QString helpPlaceOf(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        QString place = placeNamed(widget->objectName());
        if (place.isEmpty())
            place = placeNamed(QString::fromLatin1(widget->metaObject()->className()).section("::"_L1, -1));
        if (!place.isEmpty())
            return place;
    }
    return {};
}

}  // namespace sorvanto
