// What the log screen shows of a batch: its texts and prices, its lines, its mix programme, its results.
#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "screens/MixList.h"
#include "screens/frmLog.h"
#include "ui_frmLog.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

namespace sorvanto {
namespace {

constexpr int costColumn = 3;
constexpr int awpColumn = 4;

QString moneyFormat() {
    return platform::deref(basMain::Options).DefCurrency() + " ###,##0.00";
}

}  // namespace

void frmLog::refreshForm() {
    guarded("frmLog:refreshForm", [&] {
        const clsLog& log = platform::deref(m_log);
        m_ingredients = log.Chemical;
        setEnabled(true);
        ui->tabLog->setEnabled(true);
        showCaption("Logs", log.log_Name);
        fillGeneralTab();
        ui->grdIngredients->setNumberFormat(costColumn, moneyFormat());
        ui->grdIngredients->setNumberFormat(awpColumn, moneyFormat());
        ui->grdIngredients->setDataSource(m_ingredients);
        ui->grdIngredients->setAllowUpdate(false);
        populateMix(log.log_Mix);
        populateResults(log.log_Results);
    });
}

void frmLog::fillGeneralTab() {
    const clsLog& log = *m_log;
    ui->txtlog_Date->setValue(log.log_Date);
    ui->txtlog_Initials->setText(log.log_Initials);
    ui->txtlog_JarSize->setText(basMain::tableEntry(basMain::JarSizes, log.log_JarSize));
    ui->txtlog_Lot->setText(log.log_Lot);
    ui->txtlog_Name->setText(log.log_Name);
    ui->txtlog_NDC->setText(log.log_NDC);
    ui->txtlog_Notes->setText(log.log_Notes);
    ui->txtlog_Quantity->setValue(static_cast<double>(log.log_Quantity));
    ui->txtlog_Strength->setText(log.log_Strength);
    ui->txtlog_Type->setText(basMain::tableEntry(basMain::MixTypes, log.log_FormType));
    ui->txtlog_Units->setText(log.log_Units);
    ui->txtlog_Verified->setText(log.log_Verified);
    ui->txtlog_Cost->setFormats(moneyFormat(), moneyFormat());
    ui->txtlog_Cost->setValue(log.log_Cost);
    ui->txtlog_AWP->setFormats(moneyFormat(), moneyFormat());
    ui->txtlog_AWP->setValue(log.log_AWP);
}

void frmLog::populateMix(const platform::XmlDocumentPtr& document) {
    guarded("frmLog:populateMix", [&] {
        ui->lstCustom->clear();
        const platform::XmlDocument& mix = platform::deref(document);
        const platform::XmlNode programme = mix.selectSingleNode("CustomMix");
        ui->txtlog_FreeSpin->setText(programme ? programme.attribute("FreeSpin") : "1");
        ui->txtlog_PreGrind->setText(programme ? programme.attribute("PreGrind") : "0");
        listMixSteps(mix, *ui->lstCustom);
    });
}

void frmLog::populateResults(const platform::XmlDocumentPtr& document) {
    guarded("frmLog:populateResults", [&] {
        const std::pair<QLabel*, const char*> values[] = {
            {ui->lbldisp_ID, "."},
            {ui->lbldisp_JarSize, "Size"},
            {ui->lbldisp_Type, "Type"},
            {ui->lbldisp_Cycles, "LiftingCycles"},
            {ui->lbldisp_Interuption, "Interuption"},
            {ui->lbldisp_Pregrind, "PreGrind"},
            {ui->lbldisp_PrepNum, "PreparationNumber"},
            {ui->lbldisp_TotalRev, "TotalMixingRevolutions"},
            {ui->lbldisp_Version, "HardwareVersion"},
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
                                             QString("The results hold no %1").arg(node));
            label->setText(value.attribute("Value"));
        }
    });
}

}  // namespace sorvanto
