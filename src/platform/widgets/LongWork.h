// Long work in pieces on the interface thread: between two of them the windows are painted and the mixer's line is
// heard; what takes long enough to be waited for says how far it is and can be stopped.
#pragma once

#include "platform/widgets/UnderWay.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>
#include <QString>
#include <memory>

namespace platform {

class WorkLine;

class LongWork {
public:
    /// what: what is being done, in the user's language. Keys and clicks elsewhere wait or come to nothing meanwhile.
    explicit LongWork(const QString& what);
    /// Shown in a line of the window that it is done for, which hears keys and clicks meanwhile: whatever they ask for
    /// has to end this work first, and must not be done before it has ended.
    LongWork(const QString& what, WorkLine& line);
    ~LongWork();

    /// To be called between two pieces of some milliseconds. done: 0 to 1, below 0 where nobody knows. False from the
    /// moment on that the user stops the work.
    bool goesOn(double done);
    /// Whether goesOn would let the windows be painted now.
    bool isDue() const;

private:
    void show(double done);
    bool wasStopped() const;

    UnderWay m_underWay;
    QString m_what;
    QElapsedTimer m_sinceStart, m_sinceTurn;
    std::unique_ptr<QProgressDialog> m_window;
    QPointer<WorkLine> m_line;
};

}  // namespace platform
