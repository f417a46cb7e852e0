// What the main window asks of a screen that it hosts: to load once, to hear tool clicks while it is
// the current one, and to say whether the program may close.
#pragma once

#include "shared/MainWindow.h"
#include "shared/ToolActions.h"

#include <QString>
#include <QWidget>
#include <cstdint>

namespace sorvanto {

struct Context;

/// A screen is made by its maker, parented there, and loaded by one call of Form_Load right after.
/// A second instance of a screen may be made for its captions alone: it loads like any other, is never
/// shown and never listens.
class RecordScreen : public QWidget, public ToolListener {
    Q_OBJECT

public:
    explicit RecordScreen(Context& context, QWidget* parent = nullptr);
    /// A listening screen is taken out of the main window's list.
    ~RecordScreen() override;

    /// Fills the screen; called once. Reports its own failures and never throws.
    virtual void Form_Load() = 0;

    virtual std::int16_t Listener() const { return m_listener; }
    /// Stores the value. -1 connects the screen to the main window's tool clicks (once, however often it is
    /// set) and calls setMenuOptions; 0 releases it; any other value does nothing else.
    virtual void Listener(std::int16_t value);

    /// Sets the tools as they stand while the screen listens.
    void showTools() { setMenuOptions(); }

    /// What the screen does for which tool.
    const ToolActions& toolActions() const { return m_tools; }
    /// A screen on which no tool acts leaves this as it is.
    void m_frmMain_btnClick(const QString&, const QString&) override {}

    /// Answer of the save question: 0 nothing to save, 2 the closing is refused, 6 saved, 7 not to save.
    virtual std::int16_t closeForm() { return 0; }

protected:
    /// Sets the states of the command bar's tools for this screen. Guarded by the screen.
    virtual void setMenuOptions() {}

    Context& m_context;
    ToolActions m_tools;

private:
    std::int16_t m_listener = 0;
};

}  // namespace sorvanto
