// Looks from time to time whether the server gives the records: says when it has been away for a while, and when it is back,
// also to a program that went on without it. The server itself is asked off the interface thread.
#pragma once

#include "shared/ServerWait.h"

#include <QObject>
#include <QTimer>
#include <functional>

namespace sorvanto {

struct Context;

class ServerLook : public QObject {
public:
    /// What the user can do then.
    struct Ways {
        std::function<void()> readCopy;  ///< while it is away
        std::function<void()>
            goToServer;  ///< once it is back, where its copy is being read or nothing is open
    };
    /// In milliseconds.
    struct Times {
        int interval = 2'000;   ///< between two looks at the line
        int pause = 15'000;     ///< before a server that is away is asked once more
        int patience = 30'000;  ///< for how long it may be away before that is said
    };
    ServerLook(Context& context, Ways ways, const Times& times);

private:
    void look();
    void lookForServer(ServerWait& wait);
    void lookAtLine();

    enum class Told { Nothing, Away, Back };

    Context& m_context;
    Ways m_ways;
    Times m_times;
    QTimer m_timer;
    ServerWait m_besideCopy;
    Told m_told = Told::Nothing;
};

}  // namespace sorvanto
