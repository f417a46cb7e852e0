// Feeds any bytes to the translation store as its file, and texts to look up. An answer is the first entry's
// or the text itself; a file that doesn't parse is never touched; a text that was added is found by the next
// start.
#include "Fuzz.h"
#include "SilentReporter.h"

#include "config/clsLanguage.h"
#include "platform/basic/Text.h"

using namespace Qt::StringLiterals;

using fuzz::require;
using platform::XmlDocument;
using platform::XmlDocumentPtr;

namespace {

const QString fileName = u"GermanTranslation.xml"_s;
constexpr std::int16_t german = 2;

/// What the file answers: the first entry's translation; the text itself where there is none, and for a text
/// with an apostrophe, which is never looked up.
QString expected(const XmlDocument& file, const QString& text) {
    for (const platform::XmlNode& entry : file.getElementsByTagName(u"Translate"_s)) {
        if (text.contains(u'\'') || !entry.hasAttribute(u"English"_s) ||
            entry.attribute(u"English"_s) != text)
            continue;
        const bool translated = entry.hasAttribute(u"Translated"_s);
        const QString answer = translated ? entry.attribute(u"Translated"_s) : QString();
        return answer.isEmpty() ? text : answer;
    }
    return text;
}

QString looked(sorvanto::clsLanguage& language, const QString& text) {
    QString asked = text;
    QString result = u"unset"_s;
    language.translate(asked, result);
    require(asked == platform::trimmed(text), "the text asked comes back trimmed");
    return result;
}

void tryText(const fuzz::Folder& folder, const XmlDocument& file, const QString& text) {
    const QString plain = platform::trimmed(text);
    sorvanto::clsLanguage language;
    language.setLanguage(german);
    const QString answer = looked(language, text);
    require(answer == expected(file, plain), "an answer is the first entry's or the text itself");
    require(looked(language, text) == answer, "the second answer is the first");

    sorvanto::clsLanguage next;
    next.setLanguage(german);
    require(looked(next, text) == answer, "the next start gives the same answer");
    const XmlDocumentPtr now = XmlDocument::create();
    if (now->load(folder.path(fileName)) && !plain.contains(u'\'')) {
        const auto count = now->getElementsByTagName(u"Translate"_s).size();
        const auto before = file.getElementsByTagName(u"Translate"_s).size();
        require(count == before || count == before + 1, "a text is added once");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Folder folder;
    fuzz::SilentReporter::install();
    const QByteArray content = fuzz::bytes(data, size);
    // The part behind the last end of an element is also a text to look up.
    const QString ending = QString::fromUtf8(content.mid(content.lastIndexOf('>') + 1).left(60));
    for (const QString& text : {u"Save"_s, u" it's "_s, QString(), ending}) {
        folder.write(fileName, content);
        const XmlDocumentPtr file = XmlDocument::create();
        const bool parses = file->load(folder.path(fileName));
        tryText(folder, *file, text);
        require(parses || folder.read(fileName) == content, "a file that doesn't parse stays as it is");
    }
    return 0;
}
