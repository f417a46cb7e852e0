#include "core/ListenerList.h"

#include "shared/MainWindow.h"

#include <QScopeGuard>
#include <algorithm>

namespace sorvanto {

void ListenerList::connect(ToolListener& listener) {
    if (std::find(m_listeners.begin(), m_listeners.end(), &listener) == m_listeners.end())
        m_listeners.push_back(&listener);
}

void ListenerList::release(ToolListener& listener) {
    std::replace(m_listeners.begin(), m_listeners.end(), &listener, static_cast<ToolListener*>(nullptr));
    if (m_deliveries == 0)
        std::erase(m_listeners, nullptr);
}

void ListenerList::deliver(const QString& toolName, const QString& searchText) {
    ++m_deliveries;
    const auto done = qScopeGuard([this] {
        if (--m_deliveries == 0)
            std::erase(m_listeners, nullptr);
    });
    // One that was released and connected anew stands in two places, yet it is the same click.
    std::vector<const ToolListener*> heard;
    // By position and with the size read anew: the list may grow meanwhile. NOLINTNEXTLINE(modernize-loop-convert)
    for (std::size_t i = 0; i < m_listeners.size(); ++i) {
        ToolListener* listener = m_listeners[i];
        if (!listener || std::find(heard.begin(), heard.end(), listener) != heard.end())
            continue;
        heard.push_back(listener);
        listener->m_frmMain_btnClick(toolName, searchText);
    }
}

}  // namespace sorvanto
