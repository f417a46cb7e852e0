#include "core/UpdateFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/xml/XmlDocument.h"

#include <QRegularExpression>
#include <algorithm>

namespace sorvanto {
namespace {

[[noreturn]] void refuse(const QString& why) {
    throw platform::RuntimeError(platform::error::general, QStringLiteral("dbupdate.xml: ") + why,
                                 QStringLiteral("DatabaseUpdater"));
}

UpdateStep readStep(const platform::XmlNode& node) {
    if (!node.hasAttribute(QStringLiteral("From")) || !node.hasAttribute(QStringLiteral("To")))
        refuse(QStringLiteral("a step without From or To"));
    UpdateStep step{node.attribute(QStringLiteral("From")), node.attribute(QStringLiteral("To")), {}};
    const auto from = versionNumber(step.from);
    if (from < 0 || versionNumber(step.to) <= from)
        refuse(QStringLiteral("a step from \"%1\" to \"%2\"").arg(step.from, step.to));
    return step;
}

}  // namespace

std::int64_t versionNumber(const QString& text) {
    static const QRegularExpression decimal(QStringLiteral("^(\\d{1,6})(?:\\.(\\d{1,4}))?$"));
    const auto match = decimal.match(text.trimmed());
    if (!match.hasMatch())
        return -1;
    return match.captured(1).toLongLong() * 10000 + match.captured(2).leftJustified(4, QLatin1Char('0')).toLongLong();
}

std::vector<UpdateStep> readUpdateFile(const QString& path) {
    const auto document = platform::XmlDocument::create();
    if (!document->load(platform::platformPath(path)) || document->root().name() != QLatin1String("DatabaseUpdates"))
        refuse(QStringLiteral("not a list of updates"));
    std::vector<UpdateStep> steps;
    int number = 0;
    for (const auto& node : document->selectNodes(QStringLiteral("/DatabaseUpdates/Step"))) {
        auto step = readStep(node);
        const auto own = QStringLiteral("/DatabaseUpdates/Step[%1]/Statement").arg(++number);
        for (const auto& statement : document->selectNodes(own))
            step.statements << statement.text().trimmed();
        if (step.statements.isEmpty() || step.statements.contains(QString()))
            refuse(QStringLiteral("an empty step from \"%1\"").arg(step.from));
        if (!stepsFrom(steps, versionNumber(step.from)).empty())
            refuse(QStringLiteral("two steps from \"%1\"").arg(step.from));
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
