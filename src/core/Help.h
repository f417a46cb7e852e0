// The manual at F1: in any window of the program, dialogs included, at the place that tells of it.
#pragma once

#include "manual/ManualWindow.h"

#include <QObject>
#include <functional>
#include <memory>

namespace sorvanto {

struct Context;

class Help : public QObject {
    Q_OBJECT

public:
    /// Hears F1 in all windows in which it is no tool's key. A child of the main window; onShow: what is looked at in
    /// that where nothing there has the keys.
    Help(const Context& context, QObject& mainWindow, std::function<const QWidget*()> onShow);
    ~Help() override;

    /// At the place of what is looked at.
    void open();
    void close();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void openFor(const QWidget* widget);

    const Context& m_context;
    std::function<const QWidget*()> m_onShow;
    std::unique_ptr<ManualWindow> m_window;  ///< made on first use; the only one
};

}  // namespace sorvanto
