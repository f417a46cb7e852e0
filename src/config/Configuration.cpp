// What a pharmacy starts with, element by element in the order of the file.
#include "config/Configuration.h"

#include "config/frmWizard.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/xml/XmlDocument.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

void append(platform::XmlNode& parent, const char* name, const QString& text) {
    auto element = parent.appendElement(QLatin1String(name));
    if (!text.isEmpty())
        element.setText(text);
}

/// The number of the language that the user picks; 0 when the window is closed.
std::int16_t askedLanguage() {
    frmWizard wizard;
    platform::asker().showModal(wizard, [&] { wizard.exec(); });
    return wizard.Language();
}

void appendOptions(platform::XmlNode options) {
    append(options, "CommPort", u"1"_s);
    append(options, "DBLocation", platform::platformPath(platform::programFolder() + u"\\sorvanto.mdb"_s));
    append(options, "Language", QString::number(askedLanguage()));
    append(options, "DefPrinter", QString());
    append(options, "DefCurrency", QString());
}

void appendPharmacy(platform::XmlNode pharmacy) {
    append(pharmacy, "StoreName", u"Kelmar Systems"_s);
    append(pharmacy, "Address", u"418 Larkspur Ct."_s);
    append(pharmacy, "City", u"Fenwick"_s);
    append(pharmacy, "State", u"ZZ"_s);
    append(pharmacy, "PostalCode", u"54321"_s);
    append(pharmacy, "Phone", u"(555)010-0188"_s);
    append(pharmacy, "Fax", u"(555)010-0189"_s);
    append(pharmacy, "DEA", u"123456789"_s);
    append(pharmacy, "ShowPatients", u"1"_s);
    append(pharmacy, "OverrideSpeed", u"0"_s);
}

}  // namespace

void buildConfiguration(platform::XmlDocument& document) {
    auto root = document.appendElement(u"Configuration"_s);
    append(root, "Version", u"1"_s);
    const auto options = root.appendElement(u"Options"_s);
    const auto pharmacy = root.appendElement(u"Pharmacy"_s);
    appendOptions(options);
    appendPharmacy(pharmacy);
}

}  // namespace sorvanto
