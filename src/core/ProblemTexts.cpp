#include "core/ProblemTexts.h"

#include "core/ProblemTable.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// "*" stands for any text; a tag has one at its beginning, one at its end, or both.
bool fitsTag(const QString& tag, QStringView shape) {
    const bool anyBegin = shape.startsWith('*'_L1), anyEnd = shape.endsWith('*'_L1);
    if (anyBegin)
        shape = shape.sliced(1);
    if (anyEnd)
        shape = shape.chopped(1);
    if (anyBegin && anyEnd)
        return tag.contains(shape);
    if (anyBegin)
        return tag.endsWith(shape);
    return anyEnd ? tag.startsWith(shape) : tag == shape;
}

bool fitsTags(const QString& tag, const char* shapes) {
    const QStringList all = QString::fromLatin1(shapes).split(' '_L1);
    return std::any_of(all.begin(), all.end(), [&](const QString& shape) { return fitsTag(tag, shape); });
}

bool fitsCause(const ErrorReport& report, std::int32_t number, const char* text) {
    if (number != 0 && report.number != QString::number(number))
        return false;
    const QLatin1StringView part(text);
    return part.isEmpty() || report.description.contains(part, Qt::CaseInsensitive) ||
           report.statement.contains(part, Qt::CaseInsensitive);
}

QString shown(const char* sentence) { return translated(QString::fromUtf8(sentence)); }

const FailedDeed* deedOf(const QString& tag) {
    for (const FailedDeed& deed : failedDeeds()) {
        if (fitsTags(tag, deed.tags))
            return &deed;
    }
    return nullptr;
}

const char* causeOf(const ErrorReport& report) {
    for (const ProblemCause& cause : problemCauses()) {
        if (fitsCause(report, cause.number, cause.text))
            return cause.sentence;
    }
    return otherCause;
}

}  // namespace

QString problemText(const ErrorReport& report) {
    for (const KnownProblem& known : knownProblems()) {
        if (fitsTags(report.tag, known.tags) && fitsCause(report, known.number, known.text))
            return shown(known.sentence);
    }
    const FailedDeed* deed = deedOf(report.tag);
    return shown(deed ? deed->sentence : otherDeed) + ' '_L1 + shown(causeOf(report));
}

bool hasProblemText(const QString& tag) { return deedOf(tag) != nullptr; }

QStringList problemSentences() {
    QStringList sentences{QString::fromUtf8(otherDeed), QString::fromUtf8(otherCause)};
    for (const KnownProblem& known : knownProblems())
        sentences << QString::fromUtf8(known.sentence);
    for (const FailedDeed& deed : failedDeeds())
        sentences << QString::fromUtf8(deed.sentence);
    for (const ProblemCause& cause : problemCauses())
        sentences << QString::fromUtf8(cause.sentence);
    sentences.removeDuplicates();
    return sentences;
}

QStringList problemTags() {
    QStringList tags;
    for (const KnownProblem& known : knownProblems())
        tags << QString::fromLatin1(known.tags).split(' '_L1);
    for (const FailedDeed& deed : failedDeeds())
        tags << QString::fromLatin1(deed.tags).split(' '_L1);
    return tags;
}

}  // namespace sorvanto
