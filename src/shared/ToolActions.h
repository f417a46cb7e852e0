// What a screen does for the tools of the command bar that mean something to it: one action a name.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <initializer_list>
#include <map>
#include <type_traits>

namespace platform {
class CommandBar;
}

namespace sorvanto {

class ToolActions {
public:
    /// act takes the search text or nothing, and answers nothing or whether the screen's work goes on: false
    /// once another screen has taken over and has set the tools. A later action of a name replaces the
    /// earlier one.
    template <class Act>
    void on(std::initializer_list<QLatin1String> tools, Act act) {
        for (const QLatin1String tool : tools)
            m_actions.insert_or_assign(QString(tool), [act](const QString& searchText) {
                if constexpr (std::is_invocable_v<Act, const QString&>)
                    return act(searchText), true;
                else if constexpr (std::is_void_v<std::invoke_result_t<Act>>)
                    return act(), true;
                else
                    return act();
            });
    }
    /// A report's two tools: the plain name previews it, with an "x" behind it the name exports it.
    void onReport(QLatin1String tool, const std::function<void(bool exportIt)>& show);

    /// Answers as the action does; true for a tool that has none.
    bool run(const QString& tool, const QString& searchText) const;

    /// Throws itemNotFound for a name that no band of the bar has: its action could never run.
    void expectOn(const platform::CommandBar& bar) const;

private:
    std::map<QString, std::function<bool(const QString& searchText)>> m_actions;
};

}  // namespace sorvanto
