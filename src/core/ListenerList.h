// Who hears tool clicks. The list is read live: a screen that connects while a click is being delivered
// hears that click too, one that is released before its turn does not, and each hears a click once at most,
// also when it is released and connected anew meanwhile.
#pragma once

#include <QString>
#include <vector>

namespace sorvanto {

class ToolListener;

class ListenerList {
public:
    /// A listener that is connected already keeps its place.
    void connect(ToolListener& listener);
    void release(ToolListener& listener);
    /// Deliveries may nest: a listener may click a tool of its own.
    void deliver(const QString& toolName, const QString& searchText);
    bool isDelivering() const { return m_deliveries > 0; }

private:
    std::vector<ToolListener*> m_listeners;  ///< a released place is empty until no delivery runs
    int m_deliveries = 0;
};

}  // namespace sorvanto
