#include "platform/data/postgres/LikeRegex.h"

#include "platform/data/Lexer.h"

#include <QChar>
#include <QHash>
#include <map>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

/// First character and last.
using Intervals = std::map<char32_t, char32_t>;

/// The characters that are not their own folding, by the one that they fold to, and each with its folding.
struct Foldings {
    QHash<char32_t, std::vector<char32_t>> sources;
    std::vector<std::pair<char32_t, char32_t>> changed;

    Foldings() {
        for (char32_t code = 1; code <= 0x10FFFF; ++code) {
            const char32_t folded = QChar::toCaseFolded(code);
            if (folded == code)
                continue;
            sources[folded].push_back(code);
            changed.emplace_back(code, folded);
        }
    }
};

const Foldings& foldings() {
    static const Foldings all;
    return all;
}

/// Whatever its meaning in an expression, as an escape it has none.
QString escaped(char32_t code) {
    const bool plain = (code >= U'a' && code <= U'z') || (code >= U'A' && code <= U'Z') ||
                       (code >= U'0' && code <= U'9') || code == U' ';
    if (plain)
        return QString(QChar(static_cast<char16_t>(code)));
    return code > 0xFFFF ? u"\\U%1"_s.arg(code, 8, 16, QChar(u'0'))
                         : u"\\u%1"_s.arg(code, 4, 16, QChar(u'0'));
}

QString character(char32_t folded) {
    const auto sources = foldings().sources.constFind(folded);
    if (sources == foldings().sources.constEnd())
        return escaped(folded);
    QString set = u'[' + escaped(folded);
    for (const char32_t code : *sources)
        set += escaped(code);
    return set + u']';
}

/// Takes one character out.
void exclude(Intervals& intervals, char32_t code) {
    auto at = intervals.upper_bound(code);
    if (at == intervals.begin() || (--at)->second < code)
        return;
    const auto [first, last] = *at;
    intervals.erase(at);
    if (first < code)
        intervals[first] = code - 1;
    if (code < last)
        intervals[code + 1] = last;
}

/// All characters whose folding lies between these.
Intervals between(char32_t first, char32_t last) {
    Intervals found{{first, last}};
    for (const auto& [code, folded] : foldings().changed) {
        if (code >= first && code <= last)
            exclude(found, code);
    }
    for (const auto& [code, folded] : foldings().changed) {
        if (folded >= first && folded <= last)
            found[code] = code;
    }
    return found;
}

QString set(const std::u32string& inside) {
    if (inside.empty())
        return {};
    const bool negated = inside.size() > 1 && inside.front() == U'!';
    QString parts;
    for (std::size_t i = negated ? 1 : 0; i < inside.size(); ++i) {
        const bool range = i + 2 < inside.size() && inside[i + 1] == U'-';
        const char32_t last = inside[range ? i + 2 : i];
        for (const auto& [from, to] : inside[i] <= last ? between(inside[i], last) : Intervals())
            parts += from == to ? escaped(from) : escaped(from) + u'-' + escaped(to);
        i += range ? 2 : 0;
    }
    if (parts.isEmpty())
        return negated ? u"."_s : u"(?!.?)"_s;
    return (negated ? u"[^"_s : u"["_s) + parts + u']';
}

}  // namespace

QString likeRegex(const QString& pattern) {
    std::u32string folded = pattern.toStdU32String();
    for (char32_t& code : folded)
        code = QChar::toCaseFolded(code);
    QString written;
    for (std::size_t i = 0; i < folded.size(); ++i) {
        if (folded[i] == U'%') {
            if (i == 0 || folded[i - 1] != U'%')  // many in a row are one, and too many for the server
                written += u".*"_s;
        } else if (folded[i] == U'_') {
            written += u'.';
        } else if (folded[i] == U'[') {
            const std::size_t close = folded.find(U']', i);
            if (close == std::u32string::npos)
                refuseStatement(u"Invalid pattern: ] is missing"_s);
            written += set(folded.substr(i + 1, close - i - 1));
            i = close;
        } else {
            written += character(folded[i]);
        }
    }
    return u"***:^"_s + written + u'$';
}

}  // namespace platform::postgres
