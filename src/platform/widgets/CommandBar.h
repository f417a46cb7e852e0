// The command bar: named bands with named tools. Bands of the kinds tool bar, menu and side bar are drawn;
// a host band shows the window placed in its tool. Code finds every band and tool by name. A tool's caption,
// picture, tip, keys and states are those of one action, which its buttons and menu entries follow.
#pragma once

#include <QAction>
#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>
#include <vector>

class QMainWindow;
class QWidget;

namespace platform {

class Band;
class CommandBar;

enum class Companion;
enum class ToolKind { Button, Separator, TextBox, MenuEntry, SubMenu, Host };
enum class BandKind { MenuBar, Menu, ToolBar, SideBar, Host, Group };

class Tool : public QObject {
    Q_OBJECT

public:
    const QString& name() const { return m_name; }
    ToolKind kind() const { return m_kind; }
    /// Only a grouping label.
    const QString& category() const { return m_category; }
    const QString& subBand() const { return m_subBand; }
    /// Name of its picture.
    const QString& icon() const { return m_icon; }
    /// What is placed in menus and on buttons; triggering it clicks the tool.
    QAction& action() { return m_action; }

    QString caption() const { return m_action.text(); }
    void setCaption(const QString& caption) { m_action.setText(caption); }
    /// Shown as it was set, a "&" included, with the first of the keys behind it.
    const QString& toolTip() const { return m_toolTip; }
    void setToolTip(const QString& text);
    /// A menu entry that does the same has the keys, so that the menu shows them; the tip names them too. An opener
    /// on a tool bar brings its menu up at these keys. Set before the bar is attached; the other tool lives as long.
    void setKeysOf(Tool& twin) { m_keysOf = &twin; }
    /// The tool whose action has the keys: itself, if none was set.
    Tool& keysTool() { return m_keysOf ? *m_keysOf : *this; }
    const QString& description() const { return m_description; }
    void setDescription(const QString& text) { m_description = text; }
    /// A hidden tool is not enabled.
    bool enabled() const { return m_action.isEnabled(); }
    void setEnabled(bool on) { m_action.setEnabled(on); }
    /// No click changes it.
    bool checked() const { return m_action.isChecked(); }
    void setChecked(bool on);
    bool visible() const { return m_action.isVisible(); }
    void setVisible(bool on) { m_action.setVisible(on); }
    /// A small dot on the picture of a side bar's tool, with its meaning for those who can't see it; an empty
    /// text takes it away.
    QString mark() const { return m_action.data().toString(); }
    void setMark(const QString& meaning) { m_action.setData(meaning); }
    /// Text of a text box tool.
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    /// The window placed in a host tool; placing it takes it out of the tool that had it.
    QWidget* form() const;
    void setForm(QWidget* form);

signals:
    void textChanged(const QString& text);
    void formChanged();

private:
    friend class Band;
    friend class CommandBar;
    Tool(Band& band, QString name, ToolKind kind);

    Band& m_band;
    Tool* m_keysOf = nullptr;
    QString m_name, m_category, m_subBand, m_icon, m_toolTip, m_description, m_text;
    ToolKind m_kind;
    QPointer<QWidget> m_form;
    QAction m_action;
};

class Band : public QObject {
    Q_OBJECT

public:
    const QString& name() const { return m_name; }
    BandKind kind() const { return m_kind; }
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption) { m_caption = caption; }
    bool visible() const { return m_visible; }
    void setVisible(bool on);
    /// Throws itemNotFound.
    Tool& tool(const QString& name);
    const std::vector<std::unique_ptr<Tool>>& tools() const { return m_tools; }
    /// Throws itemNotFound.
    Band& childBand(const QString& name);
    const std::vector<std::unique_ptr<Band>>& childBands() const { return m_children; }

    // Building, once at start, before the bar is attached to a window.
    /// shortcut: portable text of its keys ("Ctrl+S"; several split by "; "), empty for none.
    Tool& addTool(ToolKind kind, const QString& name, const QString& category = {}, const QString& icon = {},
                  const QString& subBand = {}, const QString& shortcut = {});
    void addSeparator();
    Band& addChildBand(const QString& name);

signals:
    void visibleChanged(bool on);

private:
    friend class CommandBar;
    friend class Tool;
    Band(CommandBar& bar, QString name, BandKind kind);

    CommandBar& m_bar;
    QString m_name, m_caption;
    BandKind m_kind;
    bool m_visible = true;
    std::vector<std::unique_ptr<Tool>> m_tools;
    std::vector<std::unique_ptr<Band>> m_children;
};

class CommandBar : public QObject {
    Q_OBJECT

public:
    explicit CommandBar(QObject* parent = nullptr);
    ~CommandBar() override;

    Band& addBand(const QString& name, BandKind kind, const QString& caption = {});
    /// Throws itemNotFound.
    Band& band(const QString& name);
    const std::vector<std::unique_ptr<Band>>& bands() const { return m_bands; }
    /// Whether any band has a tool of that name.
    bool hasTool(const QString& name) const;

    /// Draws the bar: menu bar and tool bars on the window, the side bar on its left; host bands share the
    /// place in the middle, the band of the given name stands at the right of it.
    void attach(QMainWindow& window, const QString& rightHostBand);
    /// A window across the top of the middle, above the screens. Owned by the bar's window from then on.
    void addStrip(QWidget& strip);
    /// A widget at the far end of a tool bar, for what is no tool of a record.
    void addAtEnd(const QString& band, QWidget& widget);
    /// A widget that keeps the screens in the middle company. Owned by the bar's window from then on; hidden
    /// at first.
    void setCompanion(QWidget& widget);
    void showCompanion(Companion place);
    /// Lays itself out again after changes.
    void recalcLayout();
    /// Clicks a tool as a user would (only when enabled and visible); a text box tool takes the focus.
    void click(Tool& tool);

signals:
    /// A tool was clicked. A tool that opens a menu raises it before its menu comes up, wherever it stands.
    void toolClick(platform::Tool& tool);
    /// A key in a text box tool; 13 is Enter.
    void toolKeyPress(platform::Tool& tool, int key);

private:
    friend class Tool;
    void takeForm(const QWidget& form);

    class View;
    std::vector<std::unique_ptr<Band>> m_bands;
    std::unique_ptr<View> m_view;
};

}  // namespace platform
