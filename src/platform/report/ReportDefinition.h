// What a report looks like: sections with controls at fixed places. All measures are whole twips
// (1,440 to the inch, 20 to the point), from the top left of the section.
// A definition reads like a table of its controls:
//   {SectionKind::Detail, 270, {
//       field("txtName", 180, 0, 2700, 270).bound("chm_Name").points(8.25),
//       line("Line5", 5040, 180, 6030)}}
#pragma once

#include <QColor>
#include <QString>
#include <QVariant>
#include <optional>
#include <vector>

namespace platform {

using namespace Qt::StringLiterals;

inline constexpr int twipsOfInch = 1440;

enum class ControlKind { Label, Field, Line, Box, BarCode };
enum class TextAlign { Left, Centre, Right };
/// What becomes of a text that is too long for its place. Words end in "…"; a name does too, but a strength in
/// it stays whole and the name is shortened in front of it; a value (number, date, lot, code) is set in
/// smaller type and, where even that doesn't fit, stands as "####". Numbers, money and dates written by
/// Report::setValue or bound to such a column are values whatever the control says.
enum class TextKind { Words, Name, Value };
/// In the order in which they stand on a page, but for the page footer, which is last on every page.
enum class SectionKind {
    ReportHeader,
    PageHeader,
    GroupHeader,
    Detail,
    GroupFooter,
    ReportFooter,
    PageFooter
};

/// How a text looks. An empty family and 0 points stand for the report's own font.
struct TextStyle {
    QString family;
    double points = 0;  ///< a multiple of 0.05
    bool bold = false;
    bool italic = false;
    TextAlign align = TextAlign::Left;
    QRgb color = qRgb(0, 0, 0);
    std::optional<QRgb> background = std::nullopt;  ///< fills the whole control

    bool operator==(const TextStyle&) const = default;
};

/// One thing in a section. The functions below make one; its own functions refine it, each giving itself.
struct Control {
    ControlKind kind = ControlKind::Label;
    QString name;
    int left = 0, top = 0, width = 0, height = 0;
    QString text;
    QString column;  ///< column of the rows that a field shows; empty: none
    QString format;  ///< picture for the column's value, as platform::format knows them
    TextStyle style;
    TextKind textKind = TextKind::Words;
    QString title;       ///< English caption by which messages call a value; empty: its name
    int tail = 0;        ///< so many characters at the end of a name stay whole (Report::setName)
    int lead = 0;        ///< so many at its start are a caption, which alone would not name anything
    bool grows = false;  ///< a longer text takes more lines, and what stands below moves down
    int indent = 0;      ///< from the control's left edge to where its text may begin
    bool visible = true;
    QVariant value;          ///< what the text was written from, where that is a number, money or a date
    int field = unresolved;  ///< position of the column in the rows, -1 when they lack it

    static constexpr int unresolved = -2;

    Control& font(const QString& family, double points);
    Control& points(double points);
    Control& bold();
    Control& italic();
    Control& right();
    Control& centre();
    Control& background(QRgb color);
    Control& bound(const QString& columnName, const QString& picture = {});
    /// Keeps a text off what stands at the control's left edge.
    Control& indented(int twips);
    /// A name, in which a strength stays whole.
    Control& asName(const char* englishTitle);
    /// A value, as TextKind says.
    Control& asValue(const char* englishTitle);
    /// Takes as many lines as its text needs, over several pages if it must. Sections of the body only, details in
    /// one column.
    Control& growing();

    /// Whether its text must never be shortened.
    bool isValue() const;
    bool isText() const { return kind == ControlKind::Label || kind == ControlKind::Field; }
};

Control label(const QString& name, int left, int top, int width, int height, const QString& text = {});
Control field(const QString& name, int left, int top, int width, int height, const QString& text = {});
/// A horizontal rule from left to right.
Control line(const QString& name, int left, int top, int right);
/// A frame; background() fills it.
Control box(const QString& name, int left, int top, int width, int height);
/// Code 39 of the text, no line of writing.
Control barCode(const QString& name, int left, int top, int width, int height, const QString& text = {});

struct Section {
    SectionKind kind = SectionKind::Detail;
    int height = 0;
    std::vector<Control> controls;
};

struct Margins {
    int left = 720, right = 720, top = 720, bottom = 720;
};

/// Die-cut label stock: where its labels lie on the sheet. The numbers are those that the stock's maker
/// publishes: labels of 2 5/8 by 1 inch, 3/16 inch from the left edge, half an inch from the top, 2 3/4 inches
/// from one to the next.
struct LabelStock {
    int columns = 3, rows = 10;
    int left = 270, top = 720;       ///< of the first label
    int across = 3960, down = 1440;  ///< from one label's edge to the next one's
    int width = 3780, height = 1440;
};

/// Each kind of section stands at most once. One group without a key encloses all detail rows.
struct ReportDefinition {
    QString name;
    Margins margins;
    std::vector<Section> sections;
    int detailColumns = 1;  ///< details go across, then down; the printable width is divided evenly
    /// Given for labels: a printer's offset then matters, and a test sheet can show it.
    std::optional<LabelStock> stock = std::nullopt;
    TextStyle font{u"Arial"_s, 10};
    int paperWidth = 12240;  ///< US Letter, portrait
    int paperHeight = 15840;

    int printableWidth() const { return paperWidth - margins.left - margins.right; }
};

}  // namespace platform
