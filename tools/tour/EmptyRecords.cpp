#include "EmptyRecords.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/ReportList.h"

#include <QAbstractButton>

namespace tour {

void EmptyRecords::addChemicals() {
    m_visitor.tool(QStringLiteral("cmdChemicals"));
    m_visitor.picture(QStringLiteral("chemicals-none"));
    m_visitor.tool(QStringLiteral("cmdCancel"));  // the screen begins unlocked
    addChemical({QStringLiteral("Zinc Oxide"), QStringLiteral("00000-0101-01"), QStringLiteral("GMS"),
                 QStringLiteral("PWD"), QStringLiteral("ZN-77"), QStringLiteral("Harbor Apothecary Supply"),
                 QStringLiteral("0.06"), QStringLiteral("0.14"), QStringLiteral("Sieve before use.")});
    m_visitor.picture(QStringLiteral("chemical"));
    addChemical({QStringLiteral("White Petrolatum"), QStringLiteral("00000-0202-02"), QStringLiteral("GMS"),
                 QStringLiteral("UNG"), QStringLiteral("WP-12"), QStringLiteral("Northfield Fine Chemicals"),
                 QStringLiteral("0.02"), QStringLiteral("0.05"), QString()});
}

void EmptyRecords::addChemical(const Chemical& chemical) {
    m_visitor.tool(QStringLiteral("cmdNew"));
    m_visitor.type(QStringLiteral("txtchm_Name"), chemical.name);
    m_visitor.type(QStringLiteral("txtchm_NDC"), chemical.code);
    m_visitor.choose(QStringLiteral("cbochm_Units"), chemical.units);
    m_visitor.choose(QStringLiteral("cbochm_Form"), chemical.form);
    m_visitor.type(QStringLiteral("txtchm_Lot"), chemical.lot);
    m_visitor.type(QStringLiteral("txtchm_Supplier"), chemical.supplier);
    m_visitor.type(QStringLiteral("txtchm_Cost"), chemical.cost);
    m_visitor.type(QStringLiteral("txtchm_AWP"), chemical.awp);
    m_visitor.type(QStringLiteral("txtchm_Notes"), chemical.notes);
    save();
}

// A save that is refused leaves the screen open for editing.
void EmptyRecords::save() {
    m_visitor.tool(QStringLiteral("cmdSave"));
    m_visitor.requireNoReport();
    require(m_visitor.find<QAbstractButton>(QStringLiteral("cmdEdit")).isEnabled(),
            QStringLiteral("what was typed is not saved."));
}

void EmptyRecords::addFormula() {
    m_visitor.tool(QStringLiteral("cmdFormulas"));
    m_visitor.tool(QStringLiteral("cmdNew"));
    m_visitor.type(QStringLiteral("txtfrm_Name"), formulaName);
    m_visitor.choose(QStringLiteral("cbofrm_Type"), QStringLiteral("Custom"));
    m_visitor.choose(QStringLiteral("cbofrm_JarSize"), QStringLiteral("100 ml"));
    m_visitor.type(QStringLiteral("txtfrm_Desc"), QStringLiteral("Protective salve, slow cooling"));
    m_visitor.type(QStringLiteral("txtfrm_Quantity"), QString::number(baseQuantity));
    m_visitor.type(QStringLiteral("txtfrm_Units"), QStringLiteral("GMS"));
    m_visitor.type(QStringLiteral("txtfrm_Strength"), QStringLiteral("15 %"));
    m_visitor.type(QStringLiteral("txtFrm_NDC"), QStringLiteral("00000-9001-10"));
    m_visitor.type(QStringLiteral("txtfrm_Instructions"), QStringLiteral("Warm the base. Let it cool while mixing."));
    m_visitor.picture(QStringLiteral("new-formula"));
    m_visitor.openTab(1);
    addIngredient(QStringLiteral("Zinc"), QStringLiteral("15"));
    addIngredient(QStringLiteral("White"), QStringLiteral("85"));
    m_visitor.picture(QStringLiteral("new-formula-ingredients"));
    m_visitor.openTab(2);
    typeProgramme();
    m_visitor.picture(QStringLiteral("new-formula-programme"));
    save();
    m_visitor.openTab(0);
    m_visitor.requireText(QStringLiteral("txtfrm_Name"), formulaName);
}

void EmptyRecords::addIngredient(const QString& chemical, const QString& quantity) {
    m_visitor.robot().expectLine(QStringLiteral("Enter all or part of chemical name"), chemical, [this](QWidget& box) {
        m_visitor.picture(QStringLiteral("which-chemical"), &box);
    });
    m_visitor.robot().expectLine(QStringLiteral("Input desired quantity for chemical"), quantity);
    m_visitor.click(QStringLiteral("cmdAdd"));
    m_visitor.settle();
    m_visitor.requireNoReport();
}

// A step runs for a time, the last two for a number of cycles instead.
void EmptyRecords::typeProgramme() {
    const auto set = [this](const char* name, int value) {
        Visitor::step(m_visitor.find<platform::UpDown>(QLatin1String(name)), value);
    };
    for (int step = 0; step < steps; ++step) {
        set("updCustRPM", liftSetting(step));
        set("updCustSpeed", speedSetting(step));
        set("updCustTime", isTimed(step) ? step + 1 : 0);
        set("updCustCycles", isTimed(step) ? 0 : 2);
        m_visitor.click(QStringLiteral("cmdAddMix"));
    }
    set("updPreGrind", 1);
    set("updFreeSpin", 2);
    m_visitor.click(QStringLiteral("cmdAddMix"));  // one too many: nothing happens
    m_visitor.settle();
    const auto& list = m_visitor.find<platform::ReportList>(QStringLiteral("lstCustom"));
    requireSame(QStringLiteral("the number of steps"), QString::number(list.count()), QString::number(steps));
}

void EmptyRecords::addPatient() {
    m_visitor.tool(QStringLiteral("cmdPatients"));
    m_visitor.tool(QStringLiteral("cmdNew"));
    const std::pair<const char*, const char*> fields[] = {
        {"txtpat_FName", "Edith"},     {"txtpat_LName", "Holloway"},      {"txtpat_Address1", "9 Mill Road"},
        {"txtpat_City", "Millbrook"},  {"txtpat_State", "OH"},            {"txtpat_Zip", "44017"},
        {"txtpat_Country", "USA"},     {"txtpat_Phone", "440-555-0190"},  {"txtpat_Notes", "Prefers the small jar."}};
    for (const auto& [name, text] : fields)
        m_visitor.type(QLatin1String(name), QLatin1String(text));
    m_visitor.picture(QStringLiteral("new-patient"));
    m_visitor.openTab(1);
    m_visitor.robot().expectLine(QStringLiteral("Enter all or part of Log name"), formulaName.left(7), [this](QWidget& box) {
        m_visitor.picture(QStringLiteral("which-batch"), &box);
    });
    m_visitor.click(QStringLiteral("cmdAddRX"));
    m_visitor.settle();
    save();
    m_visitor.picture(QStringLiteral("prescription"));
}

}  // namespace tour
