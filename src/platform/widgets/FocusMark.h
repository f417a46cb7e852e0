// The frame that shows where the keyboard is, for widgets that draw none of their own.
#pragma once

#include <QWidget>

namespace platform {

class FocusMark : public QWidget {
public:
    /// Lies over the widget, whose child it is, while that has the focus.
    explicit FocusMark(QWidget& owner);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace platform
