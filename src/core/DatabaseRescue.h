// What comes before the questions about a database that is missing or can't be opened: a window that says what
// it is, and offers the way out that fits. The newest good copy is offered for a file that is damaged or truly
// gone, never for one that is locked or whose folder is not there: that one is still where it was.
#pragma once

#include "core/StartQuestion.h"

#include <QSet>
#include <QString>

namespace platform {
enum class DatabaseState;
}

namespace sorvanto {

struct Context;
struct GoodCopy;

/// Of the button that tries once more.
inline const QString rescueAgain = QStringLiteral("cmdAgain");

class DatabaseRescue {
public:
    /// firstStart: there were no options yet when the program started.
    DatabaseRescue(Context& context, bool firstStart) : m_context(context), m_firstStart(firstStart) {}

    /// path: of a file, or the address of a server. True when it is to be opened once more. A missing file is asked about
    /// once, since it is looked for with each statement; so is a server.
    bool offer(const QString& path);

private:
    bool offerServer(const QString& address);
    bool offerNewDatabase(const QString& path);
    bool offerWayOut(const QString& path, platform::DatabaseState state);
    bool makeOrChoose(const QString& choice, const QString& path);

    Context& m_context;
    bool m_firstStart;
    QSet<QString> m_declined;
};

}  // namespace sorvanto
