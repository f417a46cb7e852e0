// Typed access to the elements of options.xml, with the four elements that repair themselves.
#include "config/clsOptions.h"

#include "config/Configuration.h"
#include "config/frmOptions.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/Recordset.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

namespace sorvanto {
namespace {

const QString optionsNode = QStringLiteral("//Configuration/Options/");
const QString pharmacyNode = QStringLiteral("//Configuration/Pharmacy/");

platform::XmlNode existing(const platform::XmlNode& found, const QString& path) {
    if (!found)
        throw platform::RuntimeError(platform::error::objectNotSet,
                                     QStringLiteral("There is no element %1 in options.xml").arg(path));
    return found;
}

}  // namespace

clsOptions::clsOptions() {
    Class_Initialize();
}

clsOptions::~clsOptions() {
    Class_Terminate();
}

void clsOptions::Class_Initialize() {
    guarded(QStringLiteral("clsOptions:Class_Initialize"), [&] {
        basMain::databaseLocation = [] { return platform::deref(basMain::Options).DBLocation(); };
        basMain::editOptions = frmOptions::edit;
        m_path = platform::platformPath(platform::programFolder() + QStringLiteral("\\options.xml"));
        if (platform::fileExists(m_path)) {
            m_document = platform::XmlDocument::create();
            m_document->load(m_path);
        } else {
            CreateConfig();
        }
    });
}

void clsOptions::CreateConfig() {
    guarded(QStringLiteral("clsOptions:CreateConfig"), [&] {
        m_document = platform::XmlDocument::create();
        buildConfiguration(*m_document);
        saveOptions();
    });
}

void clsOptions::createNode(const QString& parentName, const QString& nodeName, const QString& nodeText) {
    guarded(QStringLiteral("clsOptions:createNode"), [&] {
        const auto parents = platform::deref(m_document).getElementsByTagName(parentName);
        auto parent = existing(parents.empty() ? platform::XmlNode() : parents.front(), parentName);
        parent.appendElement(nodeName).setText(nodeText);
        m_document->save(m_path);
    });
}

void clsOptions::saveOptions() {
    guarded(QStringLiteral("clsOptions:saveOptions"), [&] {
        if (platform::deref(m_document).root())
            m_document->save(m_path);
    });
}

void clsOptions::Class_Terminate() {
    guarded(QStringLiteral("clsOptions:Class_Terminate"), [&] {
        saveOptions();
        m_document.reset();
    });
}

platform::XmlNode clsOptions::node(const QString& path) const {
    return existing(platform::deref(m_document).selectSingleNode(path), path);
}

platform::XmlNode clsOptions::repairedNode(const QString& parent, const QString& name,
                                           const QString& repairDefault) {
    const QString path = QStringLiteral("//Configuration/%1/%2").arg(parent, name);
    if (!platform::deref(m_document).selectSingleNode(path))
        createNode(parent, name, repairDefault);
    return node(path);
}

std::int16_t clsOptions::Language() const {
    return platform::toInt16(platform::leadingNumber(node(optionsNode + QStringLiteral("Language")).text()));
}

void clsOptions::Language(std::int16_t number) {
    node(optionsNode + QStringLiteral("Language")).setText(QString::number(number));
}

std::int16_t clsOptions::CommPort() const {
    return platform::toInt16(node(optionsNode + QStringLiteral("CommPort")).text());
}

void clsOptions::CommPort(std::int16_t number) {
    node(optionsNode + QStringLiteral("CommPort")).setText(QString::number(number));
}

QString clsOptions::DBLocation() const {
    return node(optionsNode + QStringLiteral("DBLocation")).text();
}

void clsOptions::DBLocation(const QString& path) {
    node(optionsNode + QStringLiteral("DBLocation")).setText(path);
}

QString clsOptions::DefPrinter() {
    return repairedNode(QStringLiteral("Options"), QStringLiteral("DefPrinter"), QStringLiteral("0")).text();
}

void clsOptions::DefPrinter(const QString& name) {
    repairedNode(QStringLiteral("Options"), QStringLiteral("DefPrinter"), QStringLiteral("0")).setText(name);
}

QString clsOptions::DefCurrency() {
    return repairedNode(QStringLiteral("Options"), QStringLiteral("DefCurrency"), QStringLiteral("$")).text();
}

void clsOptions::DefCurrency(const QString& symbol) {
    repairedNode(QStringLiteral("Options"), QStringLiteral("DefCurrency"), QStringLiteral("$")).setText(symbol);
}

QString clsOptions::StoreName() const {
    return node(pharmacyNode + QStringLiteral("StoreName")).text();
}

void clsOptions::StoreName(const QString& text) {
    node(pharmacyNode + QStringLiteral("StoreName")).setText(text);
}

QString clsOptions::Address() const {
    return node(pharmacyNode + QStringLiteral("Address")).text();
}

void clsOptions::Address(const QString& text) {
    node(pharmacyNode + QStringLiteral("Address")).setText(text);
}

QString clsOptions::City() const {
    return node(pharmacyNode + QStringLiteral("City")).text();
}

void clsOptions::City(const QString& text) {
    node(pharmacyNode + QStringLiteral("City")).setText(text);
}

QString clsOptions::State() const {
    return node(pharmacyNode + QStringLiteral("State")).text();
}

void clsOptions::State(const QString& text) {
    node(pharmacyNode + QStringLiteral("State")).setText(text);
}

QString clsOptions::Zip() const {
    return node(pharmacyNode + QStringLiteral("PostalCode")).text();
}

void clsOptions::Zip(const QString& text) {
    node(pharmacyNode + QStringLiteral("PostalCode")).setText(text);
}

QString clsOptions::Phone() const {
    return node(pharmacyNode + QStringLiteral("Phone")).text();
}

void clsOptions::Phone(const QString& text) {
    node(pharmacyNode + QStringLiteral("Phone")).setText(text);
}

QString clsOptions::Fax() const {
    return node(pharmacyNode + QStringLiteral("Fax")).text();
}

void clsOptions::Fax(const QString& text) {
    node(pharmacyNode + QStringLiteral("Fax")).setText(text);
}

QString clsOptions::DEA() const {
    return node(pharmacyNode + QStringLiteral("DEA")).text();
}

void clsOptions::DEA(const QString& text) {
    node(pharmacyNode + QStringLiteral("DEA")).setText(text);
}

std::int16_t clsOptions::ShowPatients() {
    return platform::toInt16(
        repairedNode(QStringLiteral("Pharmacy"), QStringLiteral("ShowPatients"), QStringLiteral("0")).text());
}

void clsOptions::ShowPatients(std::int16_t flag) {
    repairedNode(QStringLiteral("Pharmacy"), QStringLiteral("ShowPatients"), QStringLiteral("0"))
        .setText(QString::number(flag));
}

std::int16_t clsOptions::OverrideSpeed() {
    return platform::toInt16(
        repairedNode(QStringLiteral("Pharmacy"), QStringLiteral("OverrideSpeed"), QStringLiteral("0")).text());
}

void clsOptions::OverrideSpeed(std::int16_t flag) {
    repairedNode(QStringLiteral("Pharmacy"), QStringLiteral("OverrideSpeed"), QStringLiteral("0"))
        .setText(QString::number(flag));
}

QString clsOptions::DBVersion() const {
    return guarded(QStringLiteral("clsOptions:DBVersion"), QString(), [] {
        const auto rows = platform::Recordset::create();
        rows->open(QStringLiteral("SELECT [opt_Version] FROM [Options]"), openDB());
        return platform::valueText(rows->value(QStringLiteral("opt_Version")));
    });
}

void clsOptions::DBVersion(const QString& version) {
    guarded(QStringLiteral("clsOptions:DBVersion"), [&] {
        platform::deref(openDB()).execute(QStringLiteral("UPDATE [Options] SET [opt_Version] = ") + version);
    });
}

}  // namespace sorvanto
