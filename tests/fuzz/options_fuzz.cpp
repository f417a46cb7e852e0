// Feeds any bytes to the settings as options.xml. A setting is its element's text and a number the one that
// stands there, or it is refused; a file that doesn't parse is never touched, and no other one loses a
// setting.
#include "Fuzz.h"
#include "SilentReporter.h"

#include "config/clsOptions.h"
#include "platform/basic/Numbers.h"

#include <optional>

using namespace Qt::StringLiterals;

using fuzz::require;
using platform::XmlDocument;
using platform::XmlDocumentPtr;
using sorvanto::clsOptions;

namespace {

const QString fileName = u"options.xml"_s;

struct TextSetting {
    const char* path;
    QString (clsOptions::*get)() const;
    void (clsOptions::*set)(const QString&);
};

constexpr TextSetting texts[] = {
    {"//Configuration/Options/DBLocation", &clsOptions::DBLocation, &clsOptions::DBLocation},
    {"//Configuration/Pharmacy/StoreName", &clsOptions::StoreName, &clsOptions::StoreName},
    {"//Configuration/Pharmacy/PostalCode", &clsOptions::Zip, &clsOptions::Zip},
    {"//Configuration/Pharmacy/DEA", &clsOptions::DEA, &clsOptions::DEA},
};

/// The text of the element in the file as it was given; nothing when there is none.
std::optional<QString> given(const XmlDocument& file, const QString& path) {
    const platform::XmlNode node = file.selectSingleNode(path);
    return node ? std::optional(node.text()) : std::nullopt;
}

template <class Get>
std::optional<std::int16_t> number(Get&& get) {
    std::int16_t value = 0;
    using namespace platform::error;
    const bool good = fuzz::succeeds({objectNotSet, typeMismatch, overflow, invalidProcedureCall},
                                     [&] { value = static_cast<std::int16_t>(get()); });
    return good ? std::optional(value) : std::nullopt;
}

void checkNumber(const std::optional<QString>& text, const std::optional<std::int16_t>& value) {
    if (!value)
        return;
    require(text.has_value(), "a number comes from an element");
    require(*value == platform::toInt16(platform::toDouble(*text)),
            "the number is the one that stands there");
}

void checkTexts(const XmlDocument& file, const clsOptions& options) {
    for (const TextSetting& setting : texts) {
        const auto text = given(file, QLatin1String(setting.path));
        QString value;
        const bool read =
            fuzz::succeeds({platform::error::objectNotSet}, [&] { value = (options.*setting.get)(); });
        require(read == text.has_value() && (!read || value == *text), "a text is its element's");
    }
}

/// What was set is what is read, now and from the file.
void checkSetting(const fuzz::Folder& folder, clsOptions& options, const QString& text) {
    for (const TextSetting& setting : texts) {
        const bool set =
            fuzz::succeeds({platform::error::objectNotSet, platform::error::invalidProcedureCall}, [&] {
                (options.*setting.set)(text);
                require((options.*setting.get)() == text, "what was set is what is read");
            });
        options.saveOptions();
        const XmlDocumentPtr saved = XmlDocument::create();
        require(saved->load(folder.path(fileName)), "the saved file can be read");
        require(!set || given(*saved, QLatin1String(setting.path)) == text, "what was set is saved");
    }
}

void tryFile(const fuzz::Folder& folder, const QByteArray& content) {
    const XmlDocumentPtr file = XmlDocument::create();
    const bool parses = file->load(folder.path(fileName));
    {
        clsOptions options(sorvanto::basMain::context());
        checkTexts(*file, options);
        checkNumber(given(*file, u"//Configuration/Options/CommPort"_s),
                    number([&] { return options.CommPort(); }));
        number([&] { return options.Language(); });
        const auto patients = given(*file, u"//Configuration/Pharmacy/ShowPatients"_s);
        checkNumber(patients ? patients : u"0"_s, number([&] { return options.ShowPatients(); }));
        const auto speed = given(*file, u"//Configuration/Pharmacy/OverrideSpeed"_s);
        checkNumber(speed ? speed : u"0"_s, number([&] { return options.OverrideSpeed(); }));
        number([&] { return options.DefPrinter(), 0; });
        number([&] { return options.DefCurrency(), 0; });
        options.saveOptions();
        checkTexts(*file, options);
        if (parses)
            checkSetting(folder, options, u"A & <B> \"ü\""_s);
    }
    require(parses || folder.read(fileName) == content, "a file that doesn't parse stays as it is");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Folder folder;
    fuzz::SilentReporter::install();
    const QByteArray content = fuzz::bytes(data, size);
    folder.write(fileName, content);
    tryFile(folder, content);
    return 0;
}
