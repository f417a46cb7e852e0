// The makers and refiners of controls.
#include "platform/report/ReportDefinition.h"

namespace platform {

Control& Control::font(const QString& family, double points) {
    style.family = family;
    style.points = points;
    return *this;
}

Control& Control::points(double points) {
    style.points = points;
    return *this;
}

Control& Control::bold() {
    style.bold = true;
    return *this;
}

Control& Control::italic() {
    style.italic = true;
    return *this;
}

Control& Control::right() {
    style.align = TextAlign::Right;
    return *this;
}

Control& Control::centre() {
    style.align = TextAlign::Centre;
    return *this;
}

Control& Control::background(QRgb color) {
    style.background = color | 0xFF000000u;
    return *this;
}

Control& Control::bound(const QString& columnName, const QString& picture) {
    column = columnName;
    format = picture;
    return *this;
}

Control& Control::indented(int twips) {
    indent = twips;
    return *this;
}

Control& Control::asName(const char* englishTitle) {
    textKind = TextKind::Name;
    title = QString::fromLatin1(englishTitle);
    return *this;
}

Control& Control::asValue(const char* englishTitle) {
    textKind = TextKind::Value;
    title = QString::fromLatin1(englishTitle);
    return *this;
}

Control& Control::growing() {
    grows = true;
    return *this;
}

bool Control::isValue() const {
    return textKind == TextKind::Value || (value.isValid() && value.userType() != QMetaType::QString);
}

namespace {
Control made(ControlKind kind, const QString& name, int left, int top, int width, int height,
             const QString& text) {
    Control control;
    control.kind = kind;
    control.name = name;
    control.left = left;
    control.top = top;
    control.width = width;
    control.height = height;
    control.text = text;
    return control;
}
}  // namespace

Control label(const QString& name, int left, int top, int width, int height, const QString& text) {
    return made(ControlKind::Label, name, left, top, width, height, text);
}

Control field(const QString& name, int left, int top, int width, int height, const QString& text) {
    return made(ControlKind::Field, name, left, top, width, height, text);
}

Control line(const QString& name, int left, int top, int right) {
    return made(ControlKind::Line, name, left, top, right - left, 0, {});
}

Control box(const QString& name, int left, int top, int width, int height) {
    return made(ControlKind::Box, name, left, top, width, height, {});
}

Control barCode(const QString& name, int left, int top, int width, int height, const QString& text) {
    return made(ControlKind::BarCode, name, left, top, width, height, text);
}

}  // namespace platform
