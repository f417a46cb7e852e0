// Feeds any bytes to the reader of dbupdate.xml: the steps as they stand there, or a refusal of the whole
// file.
#include "Fuzz.h"

#include "db/UpdateFile.h"
#include "platform/xml/XmlDocument.h"

using namespace Qt::StringLiterals;

using fuzz::require;

namespace {

/// The file that these steps come from.
QString written(const std::vector<sorvanto::UpdateStep>& steps) {
    const platform::XmlDocumentPtr document = platform::XmlDocument::create();
    platform::XmlNode root = document->appendElement(u"DatabaseUpdates"_s);
    for (const sorvanto::UpdateStep& step : steps) {
        platform::XmlNode node = root.appendElement(u"Step"_s);
        node.setAttribute(u"From"_s, step.from);
        node.setAttribute(u"To"_s, step.to);
        for (const QString& statement : step.statements)
            node.appendElement(u"Statement"_s).setText(statement);
    }
    return document->xml();
}

void checkSteps(const std::vector<sorvanto::UpdateStep>& steps) {
    for (const sorvanto::UpdateStep& step : steps) {
        const std::int64_t from = sorvanto::versionNumber(step.from);
        require(from >= 0 && sorvanto::versionNumber(step.to) > from, "each step leads upward");
        require(!step.statements.isEmpty() && !step.statements.contains(QString()),
                "each step has statements");
        const auto chain = sorvanto::stepsFrom(steps, from);
        require(!chain.empty() && chain.size() <= steps.size() && written({chain.front()}) == written({step}),
                "one step at most starts from a version");
    }
}

/// A version is a plain decimal: of digits and one point, and the value is theirs.
void checkVersion(const QString& text) {
    const std::int64_t version = sorvanto::versionNumber(text);
    if (version < 0)
        return;
    const QString plain = text.trimmed();
    for (const QChar mark : plain)
        require((mark >= u'0' && mark <= u'9') || mark == u'.', "a version is written in plain digits");
    require(plain.count(u'.') <= 1, "a version has one point at most");
    const QString fraction = plain.section(u'.', 1, 1).leftJustified(4, u'0');
    require(version == (plain.section(u'.', 0, 0) + fraction).toLongLong(),
            "a version has its digits' value");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Folder folder;
    const QString name = u"dbupdate.xml"_s;
    const QByteArray content = fuzz::bytes(data, size);
    folder.write(name, content);
    std::vector<sorvanto::UpdateStep> steps;
    checkVersion(QString::fromUtf8(content.left(20)));
    const bool read = fuzz::succeeds({platform::error::general},
                                     [&] { steps = sorvanto::readUpdateFile(folder.path(name)); });
    require(folder.read(name) == content, "the file is never written");
    if (!read)
        return 0;
    checkSteps(steps);
    const QString text = written(steps);
    folder.write(name, text.toUtf8());
    require(written(sorvanto::readUpdateFile(folder.path(name))) == text, "the steps read back as they are");
    return 0;
}
