// Long work in pieces on the interface thread: between two of them the windows are painted and the mixer's line is
// heard; what takes long enough to be waited for says how far it is and can be stopped.
#pragma once

#include "platform/widgets/UnderWay.h"

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QString>
#include <memory>

namespace platform {

class LongWork {
public:
    /// what: what is being done, in the user's language.
    explicit LongWork(const QString& what);

    /// To be called between two pieces of some milliseconds. done: 0 to 1, below 0 where nobody knows. False from the
    /// moment on that the user stops the work. Keys and clicks elsewhere wait or come to nothing meanwhile.
    bool goesOn(double done);

private:
    void show();

    UnderWay m_underWay;
    QString m_what;
    QElapsedTimer m_sinceStart, m_sinceTurn;
    std::unique_ptr<QProgressDialog> m_window;
};

}  // namespace platform
