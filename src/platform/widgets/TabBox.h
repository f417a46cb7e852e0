// Tabs whose height is that of the page on show, so that a low page does not scroll for the sake of a
// high one behind it.
#pragma once

#include <QTabWidget>

namespace platform {

class TabBox : public QTabWidget {
    Q_OBJECT
public:
    explicit TabBox(QWidget* parent = nullptr);

    /// Switches a tab on or off. The page on show stays on show, also when it is the one switched off.
    void switchTab(int index, bool on);

protected:
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    void fitToCurrent();
};

}  // namespace platform
