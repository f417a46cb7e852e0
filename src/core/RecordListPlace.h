// Where the record list stands: beside the form where the window is wide, in its place while a record is chosen
// where it is not. A button at the end of the tool strip and F9 show and hide it, Ctrl+L goes to its filter.
#pragma once

#include <QObject>

class QMainWindow;
class QToolButton;

namespace platform {
class CommandBar;
class RecordList;
}  // namespace platform

namespace sorvanto {

class RecordListPane;
struct Context;
class RecordScreen;

class RecordListPlace : public QObject {
    Q_OBJECT

public:
    /// The bar is attached to the window already.
    RecordListPlace(const Context& context, QMainWindow& window, platform::CommandBar& bar);

    /// The screen in the middle, which may be one without a list.
    void setScreen(RecordScreen* screen);
    /// To be called when something was done, here or by another bench; see RecordListPane.
    void follow();
    void followOthers();

signals:
    /// Something was done, and the list goes with it.
    void followed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isWide() const;
    bool isOpen() const;
    void translate();
    void place();
    void toggle();
    void goToFilter();
    void leave();

    QMainWindow& m_window;
    platform::CommandBar& m_bar;
    platform::RecordList* m_list;
    RecordListPane* m_pane;
    QToolButton* m_button;
    bool m_beside;         ///< wanted where there is room for it
    bool m_picks = false;  ///< stands in the place of the form, for one choice
};

}  // namespace sorvanto
