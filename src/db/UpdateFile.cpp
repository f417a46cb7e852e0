#include "db/UpdateFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/StatementEnd.h"
#include "platform/xml/XmlDocument.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

[[noreturn]] void refuse(const QString& why) {
    throw platform::RuntimeError(platform::error::general, u"dbupdate.xml: "_s + why, u"DatabaseUpdater"_s);
}

UpdateStep readStep(const platform::XmlNode& node) {
    if (!node.hasAttribute(u"From"_s) || !node.hasAttribute(u"To"_s))
        refuse(u"a step without From or To"_s);
    UpdateStep step{node.attribute(u"From"_s), node.attribute(u"To"_s), {}};
    const auto from = versionNumber(step.from);
    if (from < 0 || versionNumber(step.to) <= from)
        refuse(u"a step from \"%1\" to \"%2\""_s.arg(step.from, step.to));
    return step;
}

/// One that ends the transaction would leave half an update. A comment ends a file's engine at its first end, a server's
/// where each that began in it has ended as well.
void refuseControl(const QString& statement) {
    static const QRegularExpression control(
        u"^(BEGIN|START|COMMIT|END|ROLLBACK|ABORT|PREPARE|SAVEPOINT|RELEASE|ATTACH|DETACH|VACUUM)\\b"_s,
        QRegularExpression::CaseInsensitiveOption);
    constexpr auto whole = QRegularExpression::DotMatchesEverythingOption;
    static const QRegularExpression flat(u"^(?:[\\s\\x{FEFF}]+|--[^\\n]*|/\\*.*?(?:\\*/|\\z))+"_s, whole);
    static const QRegularExpression nested(
        u"^(?:[\\s\\x{FEFF}]+|--[^\\n]*|(/\\*(?:(?!/\\*|\\*/).|(?1))*+\\*/))+"_s, whole);
    for (const QRegularExpression& commentsAhead : {flat, nested}) {
        if (control.match(QString(statement).remove(commentsAhead)).hasMatch())
            refuse(u"a statement that is not the step's to run: %1"_s.arg(statement));
    }
}

/// Of two statements in one element the engine would run the first alone. The engine's own test knows that a trigger's body
/// holds ";".
void refuseUnlessSingle(const QString& statement) {
    const QByteArray text = statement.toUtf8();
    for (qsizetype end = text.indexOf(';'); end >= 0; end = text.indexOf(';', end + 1)) {
        if (platform::sqlite::endsStatement(text.left(end + 1)) && !text.mid(end + 1).trimmed().isEmpty())
            refuse(u"more than one statement in an element: %1"_s.arg(statement));
    }
}

UpdateOf engineOf(const platform::XmlNode& node) {
    const QString name = node.hasAttribute(u"Engine"_s) ? node.attribute(u"Engine"_s) : u"file"_s;
    if (name != "file"_L1 && name != "server"_L1)
        refuse(u"a step for \"%1\""_s.arg(name));
    return name == "file"_L1 ? UpdateOf::File : UpdateOf::Server;
}

/// A server takes no more than one at a time by itself.
void refuseUnlessGood(const UpdateStep& step, UpdateOf engine) {
    if (step.statements.isEmpty() || step.statements.contains(QString()))
        refuse(u"an empty step from \"%1\""_s.arg(step.from));
    for (const QString& statement : step.statements) {
        refuseControl(statement);
        if (engine == UpdateOf::File)
            refuseUnlessSingle(statement);
    }
}

}  // namespace

std::int64_t versionNumber(const QString& text) {
    static const QRegularExpression decimal(u"^(\\d{1,6})(?:\\.(\\d{1,4}))?$"_s);
    const auto match = decimal.match(text.trimmed());
    if (!match.hasMatch())
        return -1;
    return match.captured(1).toLongLong() * 10000 + match.captured(2).leftJustified(4, '0'_L1).toLongLong();
}

std::vector<UpdateStep> readUpdateFile(const QString& path, UpdateOf engine) {
    const auto document = platform::XmlDocument::create();
    if (!document->load(platform::platformPath(path)) || document->root().name() != "DatabaseUpdates"_L1)
        refuse(u"not a list of updates"_s);
    std::vector<UpdateStep> steps;
    int number = 0;
    for (const auto& node : document->selectNodes(u"/DatabaseUpdates/Step"_s)) {
        auto step = readStep(node);
        const auto own = u"/DatabaseUpdates/Step[%1]/Statement"_s.arg(++number);
        for (const auto& statement : document->selectNodes(own))
            step.statements << statement.text().trimmed();
        const UpdateOf stepEngine = engineOf(node);
        refuseUnlessGood(step, stepEngine);
        if (stepEngine != engine)
            continue;
        if (!stepsFrom(steps, versionNumber(step.from)).empty())
            refuse(u"two steps from \"%1\""_s.arg(step.from));
        steps.push_back(std::move(step));
    }
    return steps;
}

std::vector<UpdateStep> stepsFrom(const std::vector<UpdateStep>& all, std::int64_t version) {
    std::vector<UpdateStep> chain;
    const auto startsHere = [&](const UpdateStep& step) { return versionNumber(step.from) == version; };
    for (auto next = std::find_if(all.begin(), all.end(), startsHere); next != all.end();
         next = std::find_if(all.begin(), all.end(), startsHere)) {
        chain.push_back(*next);
        version = versionNumber(next->to);  // always above, so the walk ends
    }
    return chain;
}

}  // namespace sorvanto
