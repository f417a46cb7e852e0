// Typed access to the elements of options.xml, with the four elements that repair themselves.
#include "config/clsOptions.h"

#include "config/Configuration.h"
#include "config/LastGoodOptions.h"
#include "config/frmOptions.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/Recordset.h"
#include "shared/Context.h"
#include "shared/Guard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString optionsNode = u"//Configuration/Options/"_s;
const QString pharmacyNode = u"//Configuration/Pharmacy/"_s;

platform::XmlNode existing(const platform::XmlNode& found, const QString& path) {
    if (!found)
        throw platform::RuntimeError(platform::error::objectNotSet,
                                     u"There is no element %1 in options.xml"_s.arg(path));
    return found;
}

}  // namespace

clsOptions::clsOptions(Context& context) : m_context(context) { Class_Initialize(); }

clsOptions::~clsOptions() { Class_Terminate(); }

void clsOptions::Class_Initialize() {
    guarded(u"clsOptions:Class_Initialize"_s, [&] {
        m_context.databaseLocation = [&context = m_context] {
            return platform::deref(context.options).DBLocation();
        };
        m_context.editOptions = [&context = m_context] { frmOptions::edit(context); };
        m_path = platform::platformPath(platform::programFolder() + u"\\options.xml"_s);
        if (platform::fileExists(m_path))
            load();
        else
            CreateConfig();
    });
}

void clsOptions::load() {
    m_document = platform::XmlDocument::create();
    if (m_document->load(m_path)) {
        m_problem.clear();
        return lastGoodOptions::keep(m_path, *m_document);
    }
    m_problem = m_document->problem();
    throw platform::RuntimeError(
        platform::error::general,
        u"The options in %1 can't be read: %2. The file stays as it is."_s.arg(m_path, m_problem));
}

void clsOptions::takeLastGood() {
    guarded(u"clsOptions:takeLastGood"_s, [&] {
        lastGoodOptions::putBack(m_path);
        load();
    });
}

void clsOptions::startAnew() {
    guarded(u"clsOptions:startAnew"_s, [&] {
        lastGoodOptions::putAside(m_path);
        m_problem.clear();
        CreateConfig();
    });
}

void clsOptions::CreateConfig() {
    guarded(u"clsOptions:CreateConfig"_s, [&] {
        m_document = platform::XmlDocument::create();
        buildConfiguration(*m_document);
        saveOptions();
    });
}

void clsOptions::createNode(const QString& parentName, const QString& nodeName, const QString& nodeText) {
    guarded(u"clsOptions:createNode"_s, [&] {
        const auto parents = platform::deref(m_document).getElementsByTagName(parentName);
        auto parent = existing(parents.empty() ? platform::XmlNode() : parents.front(), parentName);
        parent.appendElement(nodeName).setText(nodeText);
        m_document->save(m_path);
    });
}

void clsOptions::saveOptions() {
    guarded(u"clsOptions:saveOptions"_s, [&] {
        if (!platform::deref(m_document).root())
            return;
        m_document->save(m_path);
        lastGoodOptions::keep(m_path, *m_document);
    });
}

void clsOptions::Class_Terminate() {
    guarded(u"clsOptions:Class_Terminate"_s, [&] {
        saveOptions();
        m_document.reset();
    });
}

platform::XmlNode clsOptions::node(const QString& path) const {
    return existing(platform::deref(m_document).selectSingleNode(path), path);
}

platform::XmlNode clsOptions::repairedNode(const QString& parent, const QString& name,
                                           const QString& repairDefault) {
    const QString path = u"//Configuration/%1/%2"_s.arg(parent, name);
    if (!platform::deref(m_document).selectSingleNode(path))
        createNode(parent, name, repairDefault);
    return node(path);
}

std::int16_t clsOptions::Language() const {
    return platform::toInt16(platform::leadingNumber(node(optionsNode + u"Language"_s).text()));
}

void clsOptions::Language(std::int16_t number) {
    node(optionsNode + u"Language"_s).setText(QString::number(number));
}

std::int16_t clsOptions::CommPort() const {
    return platform::toInt16(node(optionsNode + u"CommPort"_s).text());
}

void clsOptions::CommPort(std::int16_t number) {
    node(optionsNode + u"CommPort"_s).setText(QString::number(number));
}

QString clsOptions::DBLocation() const { return node(optionsNode + u"DBLocation"_s).text(); }

void clsOptions::DBLocation(const QString& path) { node(optionsNode + u"DBLocation"_s).setText(path); }

QString clsOptions::DefPrinter() { return repairedNode(u"Options"_s, u"DefPrinter"_s, u"0"_s).text(); }

void clsOptions::DefPrinter(const QString& name) {
    repairedNode(u"Options"_s, u"DefPrinter"_s, u"0"_s).setText(name);
}

QString clsOptions::DefCurrency() { return repairedNode(u"Options"_s, u"DefCurrency"_s, u"$"_s).text(); }

void clsOptions::DefCurrency(const QString& symbol) {
    repairedNode(u"Options"_s, u"DefCurrency"_s, u"$"_s).setText(symbol);
}

QString clsOptions::StoreName() const { return node(pharmacyNode + u"StoreName"_s).text(); }

void clsOptions::StoreName(const QString& text) { node(pharmacyNode + u"StoreName"_s).setText(text); }

QString clsOptions::Address() const { return node(pharmacyNode + u"Address"_s).text(); }

void clsOptions::Address(const QString& text) { node(pharmacyNode + u"Address"_s).setText(text); }

QString clsOptions::City() const { return node(pharmacyNode + u"City"_s).text(); }

void clsOptions::City(const QString& text) { node(pharmacyNode + u"City"_s).setText(text); }

QString clsOptions::State() const { return node(pharmacyNode + u"State"_s).text(); }

void clsOptions::State(const QString& text) { node(pharmacyNode + u"State"_s).setText(text); }

QString clsOptions::Zip() const { return node(pharmacyNode + u"PostalCode"_s).text(); }

void clsOptions::Zip(const QString& text) { node(pharmacyNode + u"PostalCode"_s).setText(text); }

QString clsOptions::Phone() const { return node(pharmacyNode + u"Phone"_s).text(); }

void clsOptions::Phone(const QString& text) { node(pharmacyNode + u"Phone"_s).setText(text); }

QString clsOptions::Fax() const { return node(pharmacyNode + u"Fax"_s).text(); }

void clsOptions::Fax(const QString& text) { node(pharmacyNode + u"Fax"_s).setText(text); }

QString clsOptions::DEA() const { return node(pharmacyNode + u"DEA"_s).text(); }

void clsOptions::DEA(const QString& text) { node(pharmacyNode + u"DEA"_s).setText(text); }

std::int16_t clsOptions::ShowPatients() {
    return platform::toInt16(repairedNode(u"Pharmacy"_s, u"ShowPatients"_s, u"0"_s).text());
}

void clsOptions::ShowPatients(std::int16_t flag) {
    repairedNode(u"Pharmacy"_s, u"ShowPatients"_s, u"0"_s).setText(QString::number(flag));
}

std::int16_t clsOptions::OverrideSpeed() {
    return platform::toInt16(repairedNode(u"Pharmacy"_s, u"OverrideSpeed"_s, u"0"_s).text());
}

void clsOptions::OverrideSpeed(std::int16_t flag) {
    repairedNode(u"Pharmacy"_s, u"OverrideSpeed"_s, u"0"_s).setText(QString::number(flag));
}

QString clsOptions::DBVersion() const {
    return guarded(u"clsOptions:DBVersion"_s, QString(), [&] {
        const auto rows = platform::Recordset::create();
        rows->open(u"SELECT [opt_Version] FROM [Options]"_s, openDB(m_context));
        return platform::valueText(rows->value(u"opt_Version"_s));
    });
}

void clsOptions::DBVersion(const QString& version) {
    guarded(u"clsOptions:DBVersion"_s, [&] {
        platform::deref(openDB(m_context)).execute(u"UPDATE [Options] SET [opt_Version] = "_s + version);
    });
}

}  // namespace sorvanto
