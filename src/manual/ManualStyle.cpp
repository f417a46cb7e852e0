// The reader of Markdown knows of headings, lists, tables and code, and leaves their look to us.
#include "manual/ManualStyle.h"

#include "platform/widgets/Theme.h"

#include <QFontDatabase>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

using platform::grid;

/// Of a heading of each level: size in parts of the plain text's, distance above and below in parts of its height.
struct HeadingLook {
    double size, above, below;
};
constexpr HeadingLook headingLooks[] = {{1.75, 0.0, 0.7}, {1.3, 1.7, 0.5}, {1.1, 1.2, 0.4}};
constexpr double lineHeight = 135;  // percent
constexpr double paragraphBelow = 0.65, itemBelow = 0.35;
constexpr double codeSize = 0.95;

const HeadingLook& lookOf(int level) { return headingLooks[std::clamp(level, 1, 3) - 1]; }

void styleBlock(const QTextBlock& block, double height) {
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    const int level = format.headingLevel();
    if (level > 0) {
        const HeadingLook& look = lookOf(level);
        format.setTopMargin(look.above * height);
        format.setBottomMargin(look.below * height);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        QTextCharFormat letters = cursor.charFormat();
        letters.clearProperty(QTextFormat::FontSizeAdjustment);
        letters.setFontPointSize(look.size * block.document()->defaultFont().pointSizeF());
        letters.setFontWeight(QFont::DemiBold);
        cursor.setCharFormat(letters);
    } else if (cursor.currentTable()) {
        format.setTopMargin(0);
        format.setBottomMargin(0);
    } else {
        format.setTopMargin(0);
        format.setBottomMargin((block.textList() ? itemBelow : paragraphBelow) * height);
    }
    if (!block.text().contains(QChar::ObjectReplacementCharacter))  // a picture is as high as it is
        format.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
    if (format.hasProperty(QTextFormat::BlockCodeFence)) {
        format.setBackground(platform::theme().window);
        format.setLeftMargin(grid);
        format.setNonBreakableLines(false);  // else a long one would widen the page
    }
    cursor.setBlockFormat(format);
}

/// Keys, file names and links.
void styleWords(const QTextBlock& block, const QFont& code) {
    std::vector<std::pair<QTextFragment, QTextCharFormat>> changes;
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat old = part.fragment().charFormat();
        QTextCharFormat format;
        if (old.fontFixedPitch()) {
            format.setFontFamilies({code.family()});
            format.setFontPointSize(code.pointSizeF());
            if (!block.blockFormat().hasProperty(QTextFormat::BlockCodeFence))
                format.setBackground(platform::theme().window);
        }
        if (old.isAnchor()) {
            format.setForeground(platform::theme().accent);
            format.setFontUnderline(true);
        }
        if (format.propertyCount() > 0)
            changes.emplace_back(part.fragment(), format);
    }
    for (const auto& [fragment, format] : changes) {
        QTextCursor cursor(block);
        cursor.setPosition(fragment.position());
        cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(format);
    }
}

void styleTable(QTextTable& table, double height) {
    const platform::Theme& colors = platform::theme();
    QTextTableFormat format = table.format();
    format.setBorder(1);
    format.setBorderBrush(colors.line);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderCollapse(true);
    format.setCellSpacing(0);
    format.setCellPadding(0.75 * grid);
    format.setTopMargin(0.3 * height);
    format.setBottomMargin(height);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    table.setFormat(format);
    for (int column = 0; column < table.columns(); ++column) {
        QTextTableCell cell = table.cellAt(0, column);
        QTextCharFormat head = cell.format();
        head.setBackground(colors.window);
        cell.setFormat(head);
        QTextCursor words = cell.firstCursorPosition();
        words.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
        QTextCharFormat letters;
        letters.setFontWeight(QFont::DemiBold);
        words.mergeCharFormat(letters);
    }
}

}  // namespace

void styleManual(QTextDocument& document, const QFont& font) {
    document.setDefaultFont(font);
    document.setIndentWidth(3 * grid);
    const double height = QFontMetricsF(font).height();
    QFont code = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    code.setPointSizeF(codeSize * font.pointSizeF());
    QTextCursor all(&document);
    all.beginEditBlock();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        styleWords(block, code);
        styleBlock(block, height);
    }
    all.endEditBlock();
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame))
            styleTable(*table, height);
    }
}

}  // namespace sorvanto
