// What the log screen shows of a batch: its texts and prices, its lines, its mix programme, its results.
#include "mixer/MixSummary.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportTexts.h"
#include "screens/MixList.h"
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
    guarded("frmLog:refreshForm", [&] {
        const clsLog& log = platform::deref(m_log);
        m_ingredients = log.Chemical;
        setEnabled(true);
        m_ui->tabLog->setEnabled(true);
        showCaption("Logs", log.log_Name);
        m_fields.show(log);
        for (const int price : {costColumn, awpColumn})
            m_ui->grdIngredients->setNumberFormat(price, optionsPricePicture());
        m_ui->grdIngredients->setDataSource(m_ingredients);
        m_ui->grdIngredients->setAllowUpdate(false);
        populateMix(log.log_Mix);
        populateResults(log.log_Results);
        m_ui->lblInterrupted->setVisible(wasInterrupted(log.log_Results).value_or(false));
    });
}

void frmLog::populateMix(const platform::XmlDocumentPtr& document) {
    guarded("frmLog:populateMix", [&] {
        m_ui->lstCustom->clear();
        m_ui->lblSteps->clear();
        const platform::XmlDocument& mix = platform::deref(document);
        const platform::XmlNode programme = mix.selectSingleNode("CustomMix");
        m_ui->txtlog_FreeSpin->setText(programme ? programme.attribute("FreeSpin") : "1");
        m_ui->txtlog_PreGrind->setText(programme ? programme.attribute("PreGrind") : "0");
        listMixSteps(mix, *m_ui->lstCustom);
        m_ui->lblSteps->setText(mixListText(*m_ui->lstCustom));
    });
}

void frmLog::populateResults(const platform::XmlDocumentPtr& document) {
    guarded("frmLog:populateResults", [&] {
        const std::pair<QLabel*, const char*> values[] = {
            {m_ui->lbldisp_ID, "."},
            {m_ui->lbldisp_JarSize, "Size"},
            {m_ui->lbldisp_Type, "Type"},
            {m_ui->lbldisp_Cycles, "LiftingCycles"},
            {m_ui->lbldisp_Interuption, "Interuption"},
            {m_ui->lbldisp_Pregrind, "PreGrind"},
            {m_ui->lbldisp_PrepNum, "PreparationNumber"},
            {m_ui->lbldisp_TotalRev, "TotalMixingRevolutions"},
            {m_ui->lbldisp_Version, "HardwareVersion"},
        };
        const platform::XmlNode results = platform::deref(document).selectSingleNode("Results");
        for (const auto& [label, node] : values) {
            if (!results) {
                label->clear();
                continue;
            }
            const platform::XmlNode value = results.selectSingleNode(node);
            if (!value)
                throw platform::RuntimeError(platform::error::objectNotSet,
                                             u"The results hold no %1"_s.arg(node));
            label->setText(value.attribute("Value"));
        }
    });
}

}  // namespace sorvanto
