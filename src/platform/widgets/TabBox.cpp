// The stack of pages asks each page for its size; one that ignores its own height asks for none.
#include "platform/widgets/TabBox.h"

#include <QSignalBlocker>
#include <QTabBar>

namespace platform {

TabBox::TabBox(QWidget* parent) : QTabWidget(parent) {
    connect(this, &QTabWidget::currentChanged, this, &TabBox::fitToCurrent);
}

void TabBox::switchTab(int index, bool on) {
    const int front = currentIndex();
    const QSignalBlocker quiet(tabBar());  // the bar would bring another page to the front
    setTabEnabled(index, on);
    setCurrentIndex(front);
}

void TabBox::tabInserted(int index) {
    QTabWidget::tabInserted(index);
    fitToCurrent();
}

void TabBox::tabRemoved(int index) {
    QTabWidget::tabRemoved(index);
    fitToCurrent();
}

void TabBox::fitToCurrent() {
    for (int i = 0; i < count(); ++i) {
        QSizePolicy policy = widget(i)->sizePolicy();
        policy.setVerticalPolicy(i == currentIndex() ? QSizePolicy::Preferred : QSizePolicy::Ignored);
        widget(i)->setSizePolicy(policy);
    }
    updateGeometry();
}

}  // namespace platform
