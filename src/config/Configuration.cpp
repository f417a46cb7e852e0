// What a pharmacy starts with, element by element in the order of the file.
#include "config/Configuration.h"

#include "config/frmWizard.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/xml/XmlDocument.h"

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
    append(options, "CommPort", QStringLiteral("1"));
    append(options, "DBLocation",
           platform::platformPath(platform::programFolder() + QStringLiteral("\\sorvanto.mdb")));
    append(options, "Language", QString::number(askedLanguage()));
    append(options, "DefPrinter", QString());
    append(options, "DefCurrency", QString());
}

void appendPharmacy(platform::XmlNode pharmacy) {
    append(pharmacy, "StoreName", QStringLiteral("Kelmar Systems"));
    append(pharmacy, "Address", QStringLiteral("418 Larkspur Ct."));
    append(pharmacy, "City", QStringLiteral("Fenwick"));
    append(pharmacy, "State", QStringLiteral("ZZ"));
    append(pharmacy, "PostalCode", QStringLiteral("54321"));
    append(pharmacy, "Phone", QStringLiteral("(555)010-0188"));
    append(pharmacy, "Fax", QStringLiteral("(555)010-0189"));
    append(pharmacy, "DEA", QStringLiteral("123456789"));
    append(pharmacy, "ShowPatients", QStringLiteral("1"));
    append(pharmacy, "OverrideSpeed", QStringLiteral("0"));
}

}  // namespace

void buildConfiguration(platform::XmlDocument& document) {
    auto root = document.appendElement(QStringLiteral("Configuration"));
    append(root, "Version", QStringLiteral("1"));
    const auto options = root.appendElement(QStringLiteral("Options"));
    const auto pharmacy = root.appendElement(QStringLiteral("Pharmacy"));
    appendOptions(options);
    appendPharmacy(pharmacy);
}

}  // namespace sorvanto
