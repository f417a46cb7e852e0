#include "manual/ManualSearch.h"

#include "platform/basic/Folding.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr qsizetype before = 30, whole = 110;  // characters of a context

/// A folded text, and for each of its characters the place in the text as it was.
struct Mapped {
    QString folded;
    std::vector<qsizetype> places;
};

Mapped mapped(const QString& text) {
    Mapped result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QString one = platform::folded(text.mid(i, 1));
        result.folded += one;
        result.places.insert(result.places.end(), static_cast<std::size_t>(one.size()), i);
    }
    result.places.push_back(text.size());
    return result;
}

bool holdsAll(const QString& folded, const QStringList& words) {
    return std::all_of(words.begin(), words.end(),
                       [&](const QString& word) { return folded.contains(word); });
}

/// Cut at blanks.
QString contextOf(const QString& text, const QStringList& words) {
    const std::vector<TextStretch> found = stretchesOf(words, text);
    if (found.empty())
        return {};
    qsizetype start = std::max<qsizetype>(found.front().start - before, 0);
    if (start > 0)
        start = text.indexOf(QRegularExpression(u"\\s"_s), start) + 1;
    qsizetype end = std::min(start + whole, text.size());
    if (end < text.size())
        end = std::max(text.lastIndexOf(QRegularExpression(u"\\s"_s), end),
                       found.front().start + found.front().length);
    QString context = text.mid(start, end - start).simplified();
    if (start > 0)
        context.prepend(u"… "_s);
    return end < text.size() ? context + u" …"_s : context;
}

}  // namespace

std::vector<TextStretch> stretchesOf(const QStringList& foldedWords, const QString& text) {
    const Mapped all = mapped(text);
    std::vector<TextStretch> found;
    for (const QString& word : foldedWords) {
        for (qsizetype at = all.folded.indexOf(word); at >= 0;
             at = all.folded.indexOf(word, at + word.size())) {
            const qsizetype start = all.places[static_cast<std::size_t>(at)];
            const qsizetype last = all.places[static_cast<std::size_t>(at + word.size() - 1)];
            found.push_back({start, last + 1 - start});
        }
    }
    std::sort(found.begin(), found.end(),
              [](const TextStretch& a, const TextStretch& b) { return a.start < b.start; });
    return found;
}

std::vector<ManualHit> searchManual(const Manual& manual, const QString& words) {
    const QStringList wanted = platform::foldedWords(words);
    std::vector<ManualHit> inHeadings, inTexts;
    if (wanted.isEmpty())
        return {};
    for (const ManualPage& page : manual.pages()) {
        for (std::size_t i = 0; i < page.sections().size(); ++i) {
            const ManualSection& section = page.sections()[i];
            const QString heading = platform::folded(section.heading);
            const bool named = holdsAll(heading, wanted);
            if (!named && !holdsAll(heading + u'\n' + platform::folded(section.text), wanted))
                continue;
            (named ? inHeadings : inTexts)
                .push_back({page.name, static_cast<int>(i), page.title(), section.heading,
                            contextOf(section.text, wanted)});
        }
    }
    inHeadings.insert(inHeadings.end(), inTexts.begin(), inTexts.end());
    return inHeadings;
}

}  // namespace sorvanto
