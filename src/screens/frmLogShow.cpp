// What the log screen shows of a batch: its texts and prices, its lines, its mix programme, its results.
#include "config/clsOptions.h"
#include "mixer/MixSummary.h"
#include "platform/basic/RuntimeError.h"
#include "screens/MixList.h"
#include "screens/frmLog.h"
#include "shared/Guard.h"
#include "shared/basMain.h"
#include "ui_frmLog.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int costColumn = 3;
constexpr int awpColumn = 4;

QString moneyFormat() { return platform::deref(basMain::Options).DefCurrency() + " ###,##0.00"; }

}  // namespace

void frmLog::fillForm() {
    guarded("frmLog:refreshForm", [&] {
        const clsLog& log = platform::deref(m_log);
        m_ingredients = log.Chemical;
        setEnabled(true);
        m_ui->tabLog->setEnabled(true);
        showCaption("Logs", log.log_Name);
        fillGeneralTab();
        m_ui->grdIngredients->setNumberFormat(costColumn, moneyFormat());
        m_ui->grdIngredients->setNumberFormat(awpColumn, moneyFormat());
        m_ui->grdIngredients->setDataSource(m_ingredients);
        m_ui->grdIngredients->setAllowUpdate(false);
        populateMix(log.log_Mix);
        populateResults(log.log_Results);
        m_ui->lblInterrupted->setVisible(wasInterrupted(log.log_Results).value_or(false));
    });
}

void frmLog::fillGeneralTab() {
    const clsLog& log = *m_log;
    m_ui->txtlog_Date->setValue(log.log_Date);
    m_ui->txtlog_Initials->setText(log.log_Initials);
    m_ui->txtlog_JarSize->setText(basMain::tableEntry(basMain::JarSizes, log.log_JarSize));
    m_ui->txtlog_Lot->setText(log.log_Lot);
    m_ui->txtlog_Name->setText(log.log_Name);
    m_ui->txtlog_NDC->setText(log.log_NDC);
    m_ui->txtlog_Notes->setText(log.log_Notes);
    m_ui->txtlog_Quantity->setValue(static_cast<double>(log.log_Quantity));
    m_ui->txtlog_Strength->setText(log.log_Strength);
    m_ui->txtlog_Type->setText(basMain::tableEntry(basMain::MixTypes, log.log_FormType));
    m_ui->txtlog_Units->setText(log.log_Units);
    m_ui->txtlog_Verified->setText(log.log_Verified);
    m_ui->txtlog_Cost->setFormats(moneyFormat(), moneyFormat());
    m_ui->txtlog_Cost->setValue(log.log_Cost);
    m_ui->txtlog_AWP->setFormats(moneyFormat(), moneyFormat());
    m_ui->txtlog_AWP->setValue(log.log_AWP);
}

void frmLog::populateMix(const platform::XmlDocumentPtr& document) {
    guarded("frmLog:populateMix", [&] {
        m_ui->lstCustom->clear();
        const platform::XmlDocument& mix = platform::deref(document);
        const platform::XmlNode programme = mix.selectSingleNode("CustomMix");
        m_ui->txtlog_FreeSpin->setText(programme ? programme.attribute("FreeSpin") : "1");
        m_ui->txtlog_PreGrind->setText(programme ? programme.attribute("PreGrind") : "0");
        listMixSteps(mix, *m_ui->lstCustom);
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
