// Rules by kind of widget; names in @ are the theme's colors.
#include "platform/widgets/StyleSheet.h"

#include "platform/widgets/Theme.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

const char* const windows = R"(
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
QMainWindow, QDialog, QStatusBar, QScrollArea#hostPage { background: @window; }
QStatusBar { background: @surface; border-top: 1px solid @line; color: @secondary; font-size: 9pt; min-height: 21px; }
QStatusBar QLabel { color: @secondary; font-size: 9pt; padding: 0 8px; }
QStatusBar::item { border: none; }
QStatusBar QPushButton { background: transparent; color: @secondary; border: none; border-radius: 4px; font-size: 9pt;
  min-height: 19px; min-width: 0; padding: 0 8px; }
QStatusBar QPushButton:hover { background: @window; }
QStatusBar QPushButton:focus { border: 2px solid @accent; min-height: 15px; padding: 0 6px; }
QStatusBar QPushButton[caution="true"] { color: @warning; font-weight: 600; }
QStatusBar QFrame#divider { background: @line; border: none; }
QFrame[card="true"], QGroupBox { background: @surface; border: 1px solid @line; border-radius: 12px; }
QGroupBox { margin-top: 0; padding: 40px 12px 12px 12px; font-weight: 600; }
QGroupBox::title { subcontrol-origin: border; subcontrol-position: top left; left: 20px; top: 14px; color: @text; }
QLabel[fieldLabel="true"] { color: @secondary; }
QLabel[heading="true"] { font-weight: 600; }
QLabel[quiet="true"] { color: @secondary; font-size: 9pt; }
QLabel[caution="true"] { color: @warning; font-weight: 600; }
QLabel[badge="true"] { background: @warning; color: @onFill; border-radius: 5px; padding: 1px 7px; font-size: 9pt; }
QToolTip { background: @text; color: @surface; border: 1px solid @text; border-radius: 4px; padding: 4px 6px; }
QSplitter::handle { background: @line; }
)";

const char* const bars = R"(
QMenuBar { background: @surface; color: @text; padding: 0 2px; spacing: 0; }
QMenuBar::item { padding: 5px 10px; border-radius: 6px; background: transparent; }
QMenuBar::item:selected, QMenuBar::item:pressed { background: @softAccent; color: @text; }
QMenu { background: @surface; color: @text; border: 1px solid @line; padding: 6px; }
QMenu::item { padding: 7px 28px 7px 12px; border-radius: 5px; }
QMenu::item:selected { background: @softAccent; color: @text; }
QMenu::item:disabled { color: @disabled; background: transparent; }
QMenu::separator { height: 1px; background: @line; margin: 5px 6px; }
QMenu::right-arrow { image: url(:/widgets/style/right-@mode.svg); width: 14px; height: 14px; right: 6px; }
QToolBar { background: @surface; border: none; border-bottom: 1px solid @line; padding: 1px 6px 3px 10px; spacing: 0; }
QToolBar[bare="true"] { padding: 0; margin: 0; border: 0; }
QToolBar::separator { background: @line; width: 1px; margin: 6px 6px; }
QFrame#sideBar { background: @surface; border: none; border-right: 1px solid @line; }
QFrame#rightHost { background: @surface; border: none; border-left: 1px solid @line; }
QToolButton { background: transparent; border: 2px solid transparent; border-radius: 8px; color: @text; }
QToolButton:hover:enabled { background: @window; }
QToolButton:pressed:enabled, QToolButton:checked { background: @softAccent; }
QToolButton:focus { border-color: @accent; }
QToolButton::menu-indicator { image: none; }
QLineEdit#searchBox { background: @window; }
)";

const char* const fields = R"(
QLineEdit, QPlainTextEdit, QTextEdit, QAbstractSpinBox {
    background: @surface; color: @text; border: 1px solid @fieldLine; border-radius: 6px;
    selection-background-color: @accent; selection-color: @onFill; }
QLineEdit, QAbstractSpinBox { padding: 0 7px; min-height: 30px; }
QPlainTextEdit, QTextEdit { padding: 3px 5px; }
QLineEdit:focus, QPlainTextEdit:focus, QTextEdit:focus, QAbstractSpinBox:focus { border: 2px solid @accent; }
QLineEdit:focus, QAbstractSpinBox:focus { padding: 0 6px; min-height: 28px; }
QPlainTextEdit:focus, QTextEdit:focus { padding: 2px 4px; }
QLineEdit[readOnly="true"], QPlainTextEdit[readOnly="true"] { background: @quietField; border: 1px solid @quietField; }
QLineEdit[readOnly="true"]:focus, QPlainTextEdit[readOnly="true"]:focus { border: 2px solid @line; }
QLineEdit[caution="true"] { border: 2px solid @warning; padding: 0 6px; min-height: 28px; }
QLabel[caution="true"] { color: @warning; }
QLineEdit[invalid="true"] { border: 2px solid @danger; padding: 0 6px; min-height: 28px; }
QLineEdit:disabled, QPlainTextEdit:disabled, QAbstractSpinBox:disabled {
    background: @quietField; border: 1px solid @quietField; color: @disabled; }
QComboBox { background: @surface; color: @text; border: 1px solid @fieldLine; border-radius: 6px;
    padding: 0 9px; min-height: 30px; }
QComboBox:focus { border: 2px solid @accent; padding: 0 8px; min-height: 28px; }
QComboBox[locked="true"] { background: @quietField; border: 1px solid @quietField; }
QComboBox[locked="true"]:focus { border: 2px solid @line; }
QComboBox:disabled { background: @quietField; border: 1px solid @quietField; color: @disabled; }
QComboBox::drop-down, QDateTimeEdit::drop-down { border: none; width: 26px; }
QDateTimeEdit::drop-down { subcontrol-origin: border; subcontrol-position: center right; }
QComboBox::down-arrow, QDateTimeEdit::down-arrow { image: url(:/widgets/style/down-@mode.svg); width: 16px; height: 16px; }
QComboBox[locked="true"]::drop-down { width: 0; }
QComboBox[locked="true"]::down-arrow { image: none; }
QComboBox QAbstractItemView { background: @surface; color: @text; border: 1px solid @line; padding: 4px;
    outline: none; selection-background-color: @softAccent; selection-color: @text; }
QComboBox QAbstractItemView::item { min-height: 30px; padding: 0 6px; border-radius: 5px; }
QComboBox QAbstractItemView::item:selected { background: @softAccent; color: @text; }
QWidget[dateFrame="true"] QLineEdit { padding-right: 30px; }
)";

const char* const buttons = R"(
QPushButton { background: @surface; color: @text; border: 1px solid @line; border-radius: 7px;
    padding: 0 22px; min-height: 33px; }
QPushButton:hover { background: @window; border-color: @fieldLine; }
QPushButton:pressed { background: @softAccent; }
QPushButton:focus { border: 2px solid @accent; padding: 0 21px; min-height: 31px; }
QPushButton:disabled { color: @disabled; background: @surface; border: 1px solid @line; }
QPushButton:default:enabled, QPushButton[primary="true"]:enabled {
    background: @accent; color: @onFill; border-color: @accent; }
QPushButton:default:focus, QPushButton[primary="true"]:focus { border: 2px solid @text; }
QPushButton[danger="true"]:enabled { background: @danger; color: @onFill; border-color: @danger; }
QPushButton[danger="true"]:focus { border: 2px solid @text; }
QPushButton[inLine="true"] { background: transparent; color: @accent; border: 1px solid transparent; border-radius: 4px;
    padding: 0 7px; min-height: 17px; font-size: 9pt; outline: none; }
QPushButton[inLine="true"]:hover { background: @softAccent; }
QPushButton[inLine="true"]:focus { border: 1px solid @accent; padding: 0 7px; min-height: 17px; }
QPushButton[inLine="true"][quiet="true"] { color: @secondary; }
QCheckBox, QRadioButton { color: @text; spacing: 8px; min-height: 30px; }
QCheckBox:disabled, QRadioButton:disabled { color: @disabled; }
QCheckBox::indicator, QRadioButton::indicator { width: 16px; height: 16px; border: 1px solid @secondary;
    background: @surface; border-radius: 4px; }
QRadioButton::indicator { border-radius: 9px; }
QCheckBox::indicator:checked { background: @accent; border-color: @accent;
    image: url(:/widgets/style/check-@mode.svg); }
QRadioButton::indicator:checked { background: @accent; border-color: @accent;
    image: url(:/widgets/style/dot-@mode.svg); }
QCheckBox::indicator:focus, QRadioButton::indicator:focus { border: 2px solid @accent; width: 14px; height: 14px; }
QCheckBox::indicator:checked:focus, QRadioButton::indicator:checked:focus { border: 2px solid @text; }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border-color: @disabled; background: @quietField; }
)";

const char* const tables = R"(
QTabWidget { background: transparent; }
QTabWidget::pane { border: none; margin: 0; padding: 14px 0 0 0; }
QTabWidget::tab-bar { left: 4px; }
QTabBar { background: transparent; font-weight: 600; qproperty-drawBase: 0; }
QTabBar::tab { background: transparent; border: none; border-bottom: 2px solid transparent; color: @secondary;
    padding: 5px 0 5px 0; margin: 0 26px 0 0; min-height: 20px; }
QTabBar::tab:!selected { font-weight: 400; }
QTabBar::tab:selected { color: @accent; border-bottom: 2px solid @accent; }
QTabBar::tab:hover:!selected:enabled { color: @text; border-bottom: 2px solid @line; }
QTabBar::tab:disabled { color: @disabled; }
QTabBar::tab:selected:focus { color: @text; border-bottom: 4px solid @accent; padding-bottom: 3px; }
QTableView, QTreeView, QListView { background: @surface; alternate-background-color: @alternateRow; color: @text;
    border: none; outline: none; gridline-color: transparent;
    selection-background-color: @softAccent; selection-color: @text; }
QHeaderView { background: @surface; border: none; }
QHeaderView::section { background: @surface; color: @secondary; border: none; border-bottom: 1px solid @line;
    padding: 0 10px; font-weight: 500; }
QTableCornerButton::section { background: @surface; border: none; }
QTreeView::item { padding: 0 6px; border: none; }
QTreeView::item:selected { background: @softAccent; color: @text; }
QListView::item { min-height: 30px; padding: 0 6px; border-radius: 5px; }
QListView::item:selected { background: @softAccent; color: @text; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }
QScrollBar:horizontal { background: transparent; height: 12px; margin: 0; }
QScrollBar::handle { background: @fieldLine; border-radius: 3px; margin: 3px; }
QScrollBar::handle:vertical { min-height: 36px; }
QScrollBar::handle:horizontal { min-width: 36px; }
QScrollBar::handle:hover { background: @secondary; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; border: none; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QScrollArea { background: transparent; border: none; }
QProgressBar { background: @line; border: none; border-radius: 4px; min-height: 8px; max-height: 8px; color: transparent; }
QProgressBar::chunk { background: @accent; border-radius: 4px; }
QCalendarWidget QWidget#qt_calendar_navigationbar { background: @surface; border-bottom: 1px solid @line; }
QCalendarWidget QToolButton { min-height: 26px; padding: 0 8px; font-weight: 600; border-radius: 6px; }
QCalendarWidget QToolButton::menu-indicator { image: none; }
QCalendarWidget QAbstractItemView { background: @surface; alternate-background-color: @window; color: @text;
    selection-background-color: @accent; selection-color: @onFill; }
QFrame#calendarPopup, QFrame#newsList { background: @surface; border: 1px solid @line; }
)";

QColor mixed(const QColor& a, const QColor& b, float share) {
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * share,
                            a.greenF() + (b.greenF() - a.greenF()) * share,
                            a.blueF() + (b.blueF() - a.blueF()) * share);
}

}  // namespace

QString styleSheet(const Theme& theme) {
    QString sheet = QLatin1String(windows) + QLatin1String(bars) + QLatin1String(fields) +
                    QLatin1String(buttons) + QLatin1String(tables);
    const QColor quietField =
        theme.dark ? theme.alternateRow : mixed(theme.alternateRow, theme.window, 0.25F);
    const std::pair<const char*, QString> names[] = {
        {"@window", theme.window.name()},
        {"@surface", theme.surface.name()},
        {"@line", theme.line.name()},
        {"@text", theme.text.name()},
        {"@secondary", theme.secondaryText.name()},
        {"@accent", theme.accent.name()},
        {"@softAccent", theme.softAccent.name()},
        {"@alternateRow", theme.alternateRow.name()},
        {"@warning", theme.warning.name()},
        {"@danger", theme.danger.name()},
        {"@onFill", theme.onFill.name()},
        {"@fieldLine", theme.fieldLine.name()},
        {"@disabled", theme.disabledText.name()},
        {"@quietField", quietField.name()},
        {"@mode", theme.dark ? u"dark"_s : u"light"_s},
    };
    for (const auto& [name, value] : names)
        sheet.replace(QLatin1String(name), value);
    return sheet;
}

}  // namespace platform
