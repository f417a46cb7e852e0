// The command bar: named bands with named tools. Bands of the kinds tool bar, menu and side bar are drawn;
// a host band shows the window placed in its tool. Code finds every band and tool by name.
#pragma once

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

class Tool {
public:
    const QString& name() const { return m_name; }
    ToolKind kind() const { return m_kind; }
    /// Only a grouping label.
    const QString& category() const { return m_category; }
    const QString& subBand() const { return m_subBand; }
    /// Name of its picture.
    const QString& icon() const { return m_icon; }
    /// Portable text of its keys ("Ctrl+S"; several split by "; "), empty for none.
    const QString& shortcut() const { return m_shortcut; }

    QString caption() const { return m_caption; }
    void setCaption(const QString& caption);
    /// Shown as it was set, a "&" included.
    QString toolTip() const { return m_toolTip; }
    void setToolTip(const QString& text);
    QString description() const { return m_description; }
    void setDescription(const QString& text) { m_description = text; }
    bool enabled() const { return m_enabled; }
    void setEnabled(bool on);
    bool checked() const { return m_checked; }
    void setChecked(bool on);
    bool visible() const { return m_visible; }
    void setVisible(bool on);
    /// A small dot on the picture of a side bar's tool, with its meaning for those who can't see it; an empty
    /// text takes it away.
    QString mark() const { return m_mark; }
    void setMark(const QString& meaning);
    /// Text of a text box tool.
    QString text() const;
    void setText(const QString& text);
    /// The window placed in a host tool; placing it takes it out of the tool that had it.
    QWidget* form() const;
    void setForm(QWidget* form);

private:
    friend class Band;
    friend class CommandBar;
    Tool(Band& band, QString name, ToolKind kind);
    void changed();

    Band& m_band;
    QString m_name, m_category, m_subBand, m_icon, m_caption, m_toolTip, m_description, m_text, m_shortcut,
        m_mark;
    ToolKind m_kind;
    bool m_enabled = true, m_checked = false, m_visible = true;
    QPointer<QWidget> m_form;
};

class Band {
public:
    const QString& name() const { return m_name; }
    BandKind kind() const { return m_kind; }
    QString caption() const { return m_caption; }
    void setCaption(const QString& caption);
    bool visible() const { return m_visible; }
    void setVisible(bool on);
    /// Throws itemNotFound.
    Tool& tool(const QString& name);
    const std::vector<std::unique_ptr<Tool>>& tools() const { return m_tools; }
    /// Throws itemNotFound.
    Band& childBand(const QString& name);

    // Building, once at start, before the bar is attached to a window.
    Tool& addTool(ToolKind kind, const QString& name, const QString& category = {}, const QString& icon = {},
                  const QString& subBand = {}, const QString& shortcut = {});
    void addSeparator();
    Band& addChildBand(const QString& name);

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
    friend class Band;
    void takeForm(const QWidget& form);
    void toolChanged(Tool& tool);
    void bandChanged(Band& band);

    class View;
    std::vector<std::unique_ptr<Band>> m_bands;
    std::unique_ptr<View> m_view;
};

}  // namespace platform
