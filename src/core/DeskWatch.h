// Watches what the user is doing in the program's windows, and tells the mixer whether the desk is free.
#pragma once

#include "mixer/Desk.h"

#include <QObject>
#include <QTimer>
#include <functional>

namespace sorvanto {

class TypedText;

class DeskWatch : public QObject, public Desk {
public:
    /// What the main window knows. Asked anew each time.
    struct Window {
        std::function<bool()> clickUnderWay;  ///< a tool click is being delivered
        std::function<TypedText*()> onShow;   ///< the screen on show; null: none that can be typed into
        std::function<void()> callAttention;
    };
    explicit DeskWatch(Window window);

    /// No modal window, menu or drag is open, nothing is under way (see platform::UnderWay), no click is being
    /// delivered, nothing typed waits for Save or Cancel, no grid cell is open, and no key was pressed within the typing rest.
    bool isFree() const override;
    bool canOpenDialog() const override;
    void keepTypedText() override;
    void callAttention() override { m_window.callAttention(); }

    /// The desktop session ends: nothing may be asked that would hold it up. Over with the next key or
    /// click, since a session's end can be called off.
    bool sessionEnds() const { return m_sessionEnds; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Window m_window;
    QTimer m_typing;  ///< runs while a key was pressed lately
    bool m_buttonDown = false, m_sessionEnds = false;
};

}  // namespace sorvanto
