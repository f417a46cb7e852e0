// The mix side of the formula screen: type, jar, speed limit, and the programme of up to sixteen steps.
#include "config/clsOptions.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/StepEntry.h"
#include "screens/MixList.h"
#include "screens/frmFormula.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmFormula.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int combinationMix = 0;
constexpr int customMix = 9;
constexpr int mixOptionsTab = 2;
constexpr int mostSteps = 16;
constexpr int liftRPMPerStep = 24;
constexpr int mixRPMPerStep = 12;
constexpr int speedLimitOverridden = 250;

/// Highest value of updCustSpeed for a jar; nothing for a code outside the rule.
std::optional<int> speedLimit(std::int16_t jar) {
    if (jar >= 1 && jar <= 3)
        return 208;
    if (jar >= 4 && jar <= 6)
        return 191;
    if (jar == 7 || jar == 8)
        return 175;
    if (jar == 9)
        return 166;
    return std::nullopt;
}

void setUpStepper(platform::UpDown& upDown, int minimum, int maximum, int step, int value) {
    upDown.setBounds(minimum, maximum);
    upDown.setStep(step);
    upDown.setValue(value);
}

}  // namespace

void frmFormula::setUpSteppers() {
    setUpStepper(*m_ui->updCustRPM, 1, 120, 1, 50);
    setUpStepper(*m_ui->updCustSpeed, 1, 250, 1, 100);
    setUpStepper(*m_ui->updCustTime, 0, 255, 1, 0);
    setUpStepper(*m_ui->updCustCycles, 0, 255, 1, 0);
    setUpStepper(*m_ui->updPreGrind, 0, 15, 1, 0);
    setUpStepper(*m_ui->updFreeSpin, 1, 16, 1, 1);
    setUpStepper(*m_ui->updReactRPM, 300, 600, 10, 300);
    setUpStepper(*m_ui->updReactTime, 166, 255, 1, 166);
    m_ui->updCustCycles->setBuddy(m_ui->lblCustCycles);
    m_ui->updPreGrind->setBuddy(m_ui->lblSetPreGrind);
    m_ui->updFreeSpin->setBuddy(m_ui->lblSetFreeSpin);
    m_ui->updReactRPM->setBuddy(m_ui->lblReactRPM);
    // Times are stepped, not typed: a bare number could be minutes or seconds.
    m_typed = {new platform::StepEntry(*m_ui->updCustRPM, *m_ui->lblCustRPM, liftRPMPerStep),
               new platform::StepEntry(*m_ui->updCustSpeed, *m_ui->lblCustSpeed, mixRPMPerStep),
               new platform::StepEntry(*m_ui->updCustCycles, *m_ui->lblCustCycles),
               new platform::StepEntry(*m_ui->updPreGrind, *m_ui->lblSetPreGrind),
               new platform::StepEntry(*m_ui->updFreeSpin, *m_ui->lblSetFreeSpin),
               new platform::StepEntry(*m_ui->updReactRPM, *m_ui->lblReactRPM)};
    const auto showTime = [this](QLabel* label, int index) {
        label->setText(tableEntry(m_context.mixTimes, index));
    };
    connect(m_ui->updCustRPM, &platform::UpDown::changed, this,
            [this](int value) { m_ui->lblCustRPM->setText(QString::number(value * liftRPMPerStep)); });
    connect(m_ui->updCustSpeed, &platform::UpDown::changed, this,
            [this](int value) { m_ui->lblCustSpeed->setText(QString::number(value * mixRPMPerStep)); });
    connect(m_ui->updCustTime, &platform::UpDown::changed, this,
            [this, showTime](int value) { showTime(m_ui->lblCustTime, value); });
    connect(m_ui->updReactTime, &platform::UpDown::changed, this,
            [this, showTime](int value) { showTime(m_ui->lblReactTime, value); });
}

// The reaction settings keep their designed captions.
void frmFormula::translateMix() {
    m_ui->fraCustom->setTitle(translated(u"Optional precision settings"_s));
    QStringList captions;
    for (const QString& caption : {u"Lift RPM"_s, u"Mix RPM"_s, u"Time"_s, u"Cycles"_s})
        captions << translated(caption);
    m_ui->lstCustom->setColumnCaptions(captions);
    QLabel* const labels[] = {m_ui->lblLiftRPM, m_ui->lblMixRPM, m_ui->lblTime, m_ui->lblCycles};
    for (int column = 0; column < captions.size(); ++column)
        labels[column]->setText(captions[column]);
    showStepCount();
    m_ui->cmdAddMix->setText(translated(u"Add Mix"_s));
    m_ui->cmdDelete->setText(translated(u"Delete Mix"_s));
    m_ui->lblPreGrind->setText(translated(u"Pre Grind"_s));
    m_ui->lblFreeSpin->setText(translated(u"Free Spin"_s));
}

void frmFormula::showStepCount() { m_ui->lblSteps->setText(mixListText(*m_ui->lstCustom, mostSteps)); }

void frmFormula::fillTypeAndJarLists() {
    m_ui->cbofrm_Type->clear();
    for (int type = 0; type < m_context.mixTypes.size(); ++type)
        m_ui->cbofrm_Type->insertItem(type, m_context.mixTypes[type]);
    m_ui->cbofrm_Type->setBoxText(u"Select Type"_s);
    m_ui->cbofrm_JarSize->clear();
    for (int jar = 1; jar < m_context.jarSizes.size(); ++jar)
        m_ui->cbofrm_JarSize->addItem(m_context.jarSizes[jar], jar);
    m_ui->cbofrm_JarSize->setBoxText(u"Select Jar Size"_s);
}

void frmFormula::cbofrm_Type_Click() {
    guarded(u"frmFormula:cbofrm_Type_Click"_s, [&] {
        const int type = m_ui->cbofrm_Type->listIndex();
        if (type == combinationMix) {
            platform::MsgBox(translated(u"Combination Mix is unsupported at this time"_s));
            m_ui->cbofrm_Type->setBoxText(translated(u"Select Type"_s));
            return;
        }
        m_ui->tabFormula->switchTab(mixOptionsTab, type == customMix);
    });
}

// Only the maximum of the one up-down changes: neither its value nor the steps listed are tested.
void frmFormula::cbofrm_JarSize_Click() {
    guarded(u"frmFormula:cbofrm_JarSize_Click"_s, [&] {
        clsFormula& formula = platform::deref(m_formula);
        const int row = m_ui->cbofrm_JarSize->listIndex();
        if (row >= 0)
            formula.frm_JarSize = static_cast<std::int16_t>(m_ui->cbofrm_JarSize->itemData(row).toInt());
        const bool overridden = platform::deref(m_context.options).OverrideSpeed() != 0;
        const std::optional<int> limit =
            overridden ? std::optional<int>(speedLimitOverridden) : speedLimit(formula.frm_JarSize);
        if (limit)
            m_ui->updCustSpeed->setMaximum(*limit);
    });
}

// What is typed on the arrows and can't be set is never left out: its field comes up and says why.
bool frmFormula::stepsReadable() {
    for (platform::StepEntry* typed : m_typed) {
        if (typed->acceptable())
            continue;
        m_ui->tabFormula->setCurrentIndex(mixOptionsTab);
        return typed->acceptable();
    }
    return true;
}

// A step runs either for a time or for a number of cycles, never both and never neither.
void frmFormula::cmdAddMix_Click() {
    guarded(u"frmFormula:cmdAddMix_Click"_s, [&] {
        if (!stepsReadable())
            return;
        const bool timed = m_ui->updCustTime->value() > 0;
        const bool cycled = m_ui->updCustCycles->value() > 0;
        if (timed == cycled || m_ui->updCustSpeed->value() == 0 || m_ui->updCustRPM->value() == 0) {
            platform::MsgBox(translated(u"Invalid mix parameters"_s),
                             {platform::Buttons::Ok, platform::Icon::Information});
            return;
        }
        if (m_ui->lstCustom->count() < mostSteps)
            m_ui->lstCustom->addRow({m_ui->lblCustRPM->text(), m_ui->lblCustSpeed->text(),
                                     m_ui->lblCustTime->text(), m_ui->lblCustCycles->text()});
        m_ui->lstCustom->showRow(m_ui->lstCustom->count() - 1);
    });
}

void frmFormula::cmdDelete_Click() {
    guarded(u"frmFormula:cmdDelete_Click"_s, [&] {
        if (const int selected = m_ui->lstCustom->currentRow(); selected >= 0)
            m_ui->lstCustom->removeRow(selected);
    });
}

void frmFormula::lstCustom_OLEStartDrag() {
    guarded(u"frmFormula:lstCustom_OLEStartDrag"_s, [&] {
        if (!m_locked)
            m_draggedRow = m_ui->lstCustom->currentRow();
    });
}

// The step lands directly above the row it was dropped on, at the end when dropped below the last one.
void frmFormula::lstCustom_OLEDragDrop(int rowUnderPointer) {
    guarded(u"frmFormula:lstCustom_OLEDragDrop"_s, [&] {
        if (m_locked || m_draggedRow < 0 || rowUnderPointer == m_draggedRow)
            return;
        const int target = rowUnderPointer < 0 ? m_ui->lstCustom->count() : rowUnderPointer;
        m_ui->lstCustom->addRow(m_ui->lstCustom->row(m_draggedRow), target);
        m_ui->lstCustom->setCurrentRow(target);
        m_ui->lstCustom->removeRow(target <= m_draggedRow ? m_draggedRow + 1 : m_draggedRow);
        m_draggedRow = -1;
    });
}

platform::XmlDocumentPtr frmFormula::makeCustomXML() {
    return guarded(u"frmFormula:makeCustomXML"_s, platform::XmlDocumentPtr(), [&] {
        const platform::XmlDocumentPtr document = platform::XmlDocument::create();
        platform::XmlNode programme = document->appendElement(u"CustomMix"_s);
        programme.setAttribute(u"PreGrind"_s, m_ui->lblSetPreGrind->text());
        programme.setAttribute(u"FreeSpin"_s, m_ui->lblSetFreeSpin->text());
        const QString attributes[] = {u"LiftRPM"_s, u"MixRPM"_s, u"MixTime"_s, u"Cycles"_s};
        for (int row = 0; row < m_ui->lstCustom->count(); ++row) {
            platform::XmlNode step = programme.appendElement(u"Mix"_s);
            const QStringList cells = m_ui->lstCustom->row(row);
            for (int cell = 0; cell < 4; ++cell)
                step.setAttribute(attributes[cell], cells.value(cell));
        }
        return document;
    });
}

void frmFormula::populateMix(const platform::XmlDocumentPtr& document) {
    guarded(u"frmFormula:populateMix"_s, [&] {
        m_ui->lstCustom->clear();
        const platform::XmlDocument& mix = platform::deref(document);
        const platform::XmlNode programme = mix.selectSingleNode(u"CustomMix"_s);
        m_ui->lblSetFreeSpin->setText(programme ? programme.attribute(u"FreeSpin"_s) : u"1"_s);
        m_ui->lblSetPreGrind->setText(programme ? programme.attribute(u"PreGrind"_s) : u"0"_s);
        listMixSteps(mix, *m_ui->lstCustom);
    });
}

// The steps and settings of a mix are one document.
bool frmFormula::fillPastParts(const PastValues& past) {
    if (!past.changed.contains(u"frm_Mix"_s))
        return false;
    const platform::XmlDocumentPtr mix = platform::XmlDocument::create();
    if (const QString text = past.then.value(u"frm_Mix"_s).toString(); !text.isEmpty())
        mix->loadXML(text);
    populateMix(mix);
    return true;
}

}  // namespace sorvanto
