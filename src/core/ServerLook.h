// Looks from time to time, and off the interface thread, whether the server gives the records: says when it has been away
// for a while, and when it is back.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

namespace platform::postgres {
class Trial;
}

namespace sorvanto {

struct Context;

class ServerLook : public QObject {
public:
    /// What the user can do then.
    struct Ways {
        std::function<void()> readCopy;    ///< while it is away
        std::function<void()> goToServer;  ///< once it is back, where its copy is being read
    };
    /// In milliseconds; interval: between two looks; patience: for how long it may be away before that is said.
    ServerLook(const Context& context, Ways ways, int interval = 15'000, int patience = 30'000);
    ~ServerLook() override;

private:
    void look();
    void lookForServer();
    void lookAtLine();

    const Context& m_context;
    Ways m_ways;
    int m_patience;
    QTimer m_timer;
    std::unique_ptr<platform::postgres::Trial> m_trial;
    bool m_told = false;  ///< that it is back, or away
};

}  // namespace sorvanto
