// What the log screen shows of a batch: its texts and prices, its lines, its mix programme, its results.
#include "mixer/MixSummary.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportTexts.h"
#include "screens/MixList.h"
#include "screens/RecipeChanges.h"
#include "screens/frmLog.h"
#include "shared/Guard.h"
#include "ui_frmLog.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int costColumn = 3;
constexpr int awpColumn = 4;

}  // namespace

void frmLog::fillForm() {
    guarded(u"frmLog:refreshForm"_s, [&] {
        const clsLog& log = platform::deref(m_log);
        m_ingredients = log.Chemical;
        setEnabled(true);
        m_ui->tabLog->setEnabled(true);
        showCaption(u"Logs"_s, log.log_Name);
        m_fields.show(log);
        for (const int price : {costColumn, awpColumn})
            m_ui->grdIngredients->setNumberFormat(price, optionsPricePicture(m_context));
        m_ui->grdIngredients->setDataSource(m_ingredients);
        m_ui->grdIngredients->setAllowUpdate(false);
        populateMix(log.log_Mix);
        populateResults(log.log_Results);
        m_recipeChanges->showFor(log);
        m_ui->lblInterrupted->setVisible(wasInterrupted(log.log_Results).value_or(false));
    });
}

void frmLog::populateMix(const platform::XmlDocumentPtr& document) {
    guarded(u"frmLog:populateMix"_s, [&] {
        m_ui->lstCustom->clear();
        m_ui->lblSteps->clear();
        const platform::XmlDocument& mix = platform::deref(document);
        const platform::XmlNode programme = mix.selectSingleNode(u"CustomMix"_s);
        m_ui->txtlog_FreeSpin->setText(programme ? programme.attribute(u"FreeSpin"_s) : u"1"_s);
        m_ui->txtlog_PreGrind->setText(programme ? programme.attribute(u"PreGrind"_s) : u"0"_s);
        listMixSteps(mix, *m_ui->lstCustom);
        m_ui->lblSteps->setText(mixListText(*m_ui->lstCustom));
    });
}

void frmLog::populateResults(const platform::XmlDocumentPtr& document) {
    guarded(u"frmLog:populateResults"_s, [&] {
        const std::pair<QLabel*, QString> values[] = {
            {m_ui->lbldisp_ID, u"."_s},
            {m_ui->lbldisp_JarSize, u"Size"_s},
            {m_ui->lbldisp_Type, u"Type"_s},
            {m_ui->lbldisp_Cycles, u"LiftingCycles"_s},
            {m_ui->lbldisp_Interuption, u"Interuption"_s},
            {m_ui->lbldisp_Pregrind, u"PreGrind"_s},
            {m_ui->lbldisp_PrepNum, u"PreparationNumber"_s},
            {m_ui->lbldisp_TotalRev, u"TotalMixingRevolutions"_s},
            {m_ui->lbldisp_Version, u"HardwareVersion"_s},
        };
        const platform::XmlNode results = platform::deref(document).selectSingleNode(u"Results"_s);
        for (const auto& [label, node] : values) {
            if (!results) {
                label->clear();
                continue;
            }
            const platform::XmlNode value = results.selectSingleNode(node);
            if (!value)
                throw platform::RuntimeError(platform::error::objectNotSet,
                                             u"The results hold no %1"_s.arg(node));
            label->setText(value.attribute(u"Value"_s));
        }
    });
}

}  // namespace sorvanto
