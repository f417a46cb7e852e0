// Style table, warnings, and the text form of a document.
#include "platform/report/PageDocument.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

std::uint16_t PageDocument::styleIndex(const TextStyle& style) {
    const auto place = std::find(styles.begin(), styles.end(), style);
    if (place != styles.end())
        return static_cast<std::uint16_t>(place - styles.begin());
    styles.push_back(style);
    return static_cast<std::uint16_t>(styles.size() - 1);
}

void PageDocument::warn(WarningKind kind, const Control& control) {
    if (kind == WarningKind::TextCut)
        ++cutTexts;
    else if (kind == WarningKind::NoBarCode)
        ++missingBarCodes;
    else if (kind == WarningKind::ValueHidden)
        ++hiddenValues;
    for (PageWarning& warning : warnings) {
        if (warning.kind == kind && warning.control == control.name && warning.text == control.text) {
            ++warning.count;
            return;
        }
    }
    constexpr std::size_t most = 1000;
    if (warnings.size() < most)
        warnings.push_back(
            {kind, static_cast<int>(pages.size()), 1, control.name, control.title, control.text});
}

QString dumped(const PageDocument& document) {
    static const char* const names[] = {"text", "line", "box", "bars"};
    QString out;
    int number = 0;
    for (const Page& page : document.pages) {
        out += u"page %1\n"_s.arg(++number);
        for (const PageItem& item : page.items) {
            out += u"%1 %2 %3 %4 %5"_s.arg(QLatin1String(names[static_cast<int>(item.kind)]))
                       .arg(item.x)
                       .arg(item.y)
                       .arg(item.width)
                       .arg(item.height);
            if (!item.text.isEmpty()) {
                QString text = item.text;
                text.replace('\\'_L1, "\\\\"_L1)
                    .replace('\r'_L1, "\\r"_L1)
                    .replace('\n'_L1, "\\n"_L1)
                    .replace('\t'_L1, "\\t"_L1);
                out += ' '_L1 + text;
            }
            if (item.kind == ItemKind::Text && (!item.text.isEmpty() || item.runCount > 0)) {
                QStringList shown;
                for (std::uint32_t i = 0; i < item.runCount; ++i)
                    shown << page.runs[item.firstRun + i].text;
                if (shown != QStringList(item.text))
                    out += u"  shown as: "_s + shown.join(u" | "_s);
                if (item.drawn != item.style)
                    out += u"  in %1 point"_s.arg(document.styles[item.drawn].points);
            }
            out += '\n'_L1;
        }
    }
    return out;
}

}  // namespace platform
