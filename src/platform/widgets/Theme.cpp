// Palette, font and style for the whole program.
#include "platform/widgets/Theme.h"

#include "platform/widgets/IconEngine.h"
#include "platform/widgets/Style.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

Theme lightTheme() {
    Theme t;
    t.window = 0xF4F6F8;
    t.surface = 0xFFFFFF;
    t.line = 0xD6DDE4;
    t.text = 0x1B2733;
    t.secondaryText = 0x5C6B7A;
    t.accent = 0x0B7285;
    t.softAccent = 0xE2F1F4;
    t.alternateRow = 0xF8FAFB;
    t.good = 0x27803A;
    t.warning = 0xA65500;
    t.danger = 0xC92A2A;
    t.onFill = 0xFFFFFF;
    t.quietField = 0xF7F9FA;
    t.fieldLine = 0x7F8D9A;
    t.disabledText = 0xB4BDC6;
    return t;
}

Theme darkTheme() {
    Theme t;
    t.window = 0x141A20;
    t.surface = 0x1D252D;
    t.line = 0x36424E;
    t.text = 0xE7EDF2;
    t.secondaryText = 0x9DAEBD;
    t.accent = 0x4CC3D3;
    t.softAccent = 0x173F47;
    t.alternateRow = 0x212A33;
    t.good = 0x69C37B;
    t.warning = 0xF0A94A;
    t.danger = 0xFF7B7B;
    t.onFill = 0x141A20;
    t.quietField = 0x212A33;
    t.fieldLine = 0x6B7C8C;
    t.disabledText = 0x5A6875;
    t.dark = true;
    return t;
}

const Theme* current = nullptr;

/// Whether the desktop's own colors are dark; asked once, before our palette takes their place.
bool desktopIsDark() {
    static const bool dark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    return dark;
}

QPalette paletteOf(const Theme& t) {
    QPalette p(t.text, t.surface, t.surface, t.line, t.line, t.text, t.text, t.surface, t.window);
    p.setColor(QPalette::AlternateBase, t.alternateRow);
    p.setColor(QPalette::Highlight, t.accent);
    p.setColor(QPalette::HighlightedText, t.onFill);
    p.setColor(QPalette::PlaceholderText, t.secondaryText);
    p.setColor(QPalette::Link, t.accent);
    p.setColor(QPalette::LinkVisited, t.accent);
    p.setColor(QPalette::ToolTipBase, t.text);
    p.setColor(QPalette::ToolTipText, t.surface);
    p.setColor(QPalette::Midlight, t.line);
    p.setColor(QPalette::Shadow, t.line);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, t.disabledText);
    return p;
}

QFont programFont(const QFont& system) {
    QFont font(system);
    font.setFamilies({u"Inter"_s, system.family()});
    font.setPointSizeF(10.5);
    return font;
}

void applyColors(bool dark) {
    desktopIsDark();
    static const QFont system = QApplication::font();
    current = &themeOf(dark);
    QApplication::setStyle(new Style);  // owned by the application
    QApplication::setFont(programFont(system));
    QApplication::setPalette(paletteOf(*current));
    QToolTip::setPalette(paletteOf(*current));
    QApplication::setWindowIcon(applicationIcon());
}

}  // namespace

const Theme& themeOf(bool dark) {
    static const Theme light = lightTheme(), night = darkTheme();
    return dark ? night : light;
}

const Theme& theme() { return current ? *current : themeOf(false); }

void applyTheme(QApplication& application) { applyTheme(application, desktopIsDark()); }

void applyTheme(QApplication&, bool dark) { applyColors(dark); }

QIcon icon(const QString& name) { return icon(name, QColor()); }

QIcon icon(const QString& name, const QColor& color) {
    return IconEngine::exists(name) ? QIcon(new IconEngine(name, color)) : QIcon();
}

QIcon applicationIcon() { return icon(u"application"_s); }

}  // namespace platform
