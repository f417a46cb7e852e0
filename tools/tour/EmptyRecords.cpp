// Typing records into the screens.
#include "EmptyRecords.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/ReportList.h"

#include <QAbstractButton>

namespace tour {

void EmptyRecords::addChemicals() {
    m_visitor.tool("cmdChemicals");
    m_visitor.picture("chemicals-none");
    m_visitor.tool("cmdCancel");  // the screen begins unlocked
    addChemical({"Zinc Oxide", "00000-0101-01", "GMS", "PWD", "ZN-77", "Harbor Apothecary Supply", "0.06",
                 "0.14", "Sieve before use."});
    m_visitor.picture("chemical");
    addChemical({"White Petrolatum", "00000-0202-02", "GMS", "UNG", "WP-12", "Northfield Fine Chemicals",
                 "0.02", "0.05", QString()});
}

void EmptyRecords::addChemical(const Chemical& chemical) {
    m_visitor.tool("cmdNew");
    m_visitor.type("txtchm_Name", chemical.name);
    m_visitor.type("txtchm_NDC", chemical.code);
    m_visitor.choose("cbochm_Units", chemical.units);
    m_visitor.choose("cbochm_Form", chemical.form);
    m_visitor.type("txtchm_Lot", chemical.lot);
    m_visitor.type("txtchm_Supplier", chemical.supplier);
    m_visitor.type("txtchm_Cost", chemical.cost);
    m_visitor.type("txtchm_AWP", chemical.awp);
    m_visitor.type("txtchm_Notes", chemical.notes);
    save();
}

// A save that is refused leaves the screen open for editing.
void EmptyRecords::save() {
    m_visitor.tool("cmdSave");
    m_visitor.requireNoReport();
    require(m_visitor.find<QAbstractButton>("cmdEdit").isEnabled(), "what was typed is not saved.");
}

void EmptyRecords::addFormula() {
    m_visitor.tool("cmdFormulas");
    m_visitor.tool("cmdNew");
    m_visitor.type("txtfrm_Name", formulaName);
    m_visitor.choose("cbofrm_Type", "Custom");
    m_visitor.choose("cbofrm_JarSize", "100 ml");
    m_visitor.type("txtfrm_Desc", "Protective salve, slow cooling");
    m_visitor.type("txtfrm_Quantity", QString::number(baseQuantity));
    m_visitor.type("txtfrm_Units", "GMS");
    m_visitor.type("txtfrm_Strength", "15 %");
    m_visitor.type("txtFrm_NDC", "00000-9001-10");
    m_visitor.type("txtfrm_Instructions", "Warm the base. Let it cool while mixing.");
    m_visitor.picture("new-formula");
    m_visitor.openTab(1);
    addIngredient("Zinc", "15");
    addIngredient("White", "85");
    m_visitor.picture("new-formula-ingredients");
    m_visitor.openTab(2);
    typeProgramme();
    m_visitor.picture("new-formula-programme");
    save();
    m_visitor.openTab(0);
    m_visitor.requireText("txtfrm_Name", formulaName);
}

void EmptyRecords::addIngredient(const QString& chemical, const QString& quantity) {
    m_visitor.robot().expectLine("Enter all or part of chemical name", chemical,
                                 [this](QWidget& box) { m_visitor.picture("which-chemical", &box); });
    m_visitor.robot().expectLine("Input desired quantity for chemical", quantity);
    m_visitor.click("cmdAdd");
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
        m_visitor.click("cmdAddMix");
    }
    set("updPreGrind", 1);
    set("updFreeSpin", 2);
    m_visitor.click("cmdAddMix");  // one too many: nothing happens
    m_visitor.settle();
    const auto& list = m_visitor.find<platform::ReportList>("lstCustom");
    requireSame("the number of steps", QString::number(list.count()), QString::number(steps));
}

void EmptyRecords::addPatient() {
    m_visitor.tool("cmdPatients");
    m_visitor.tool("cmdNew");
    const std::pair<const char*, const char*> fields[] = {{"txtpat_FName", "Edith"},
                                                          {"txtpat_LName", "Holloway"},
                                                          {"txtpat_Address1", "9 Mill Road"},
                                                          {"txtpat_City", "Millbrook"},
                                                          {"txtpat_State", "OH"},
                                                          {"txtpat_Zip", "44017"},
                                                          {"txtpat_Country", "USA"},
                                                          {"txtpat_Phone", "440-555-0190"},
                                                          {"txtpat_Notes", "Prefers the small jar."}};
    for (const auto& [name, text] : fields)
        m_visitor.type(QLatin1String(name), QLatin1String(text));
    m_visitor.picture("new-patient");
    m_visitor.openTab(1);
    m_visitor.robot().expectLine("Enter all or part of Log name", formulaName.left(7),
                                 [this](QWidget& box) { m_visitor.picture("which-batch", &box); });
    m_visitor.click("cmdAddRX");
    m_visitor.settle();
    save();
    m_visitor.picture("prescription");
}

}  // namespace tour
