// What is told where a record is not what the user was shown any more, so that nothing was stored over it.
#pragma once

#include <QString>

namespace sorvanto {

struct ChangedMeanwhile {
    QString name;     ///< of the record; empty where it is not known which
    QString changer;  ///< "rkent@bench2"; empty for another program, and where it is not known
};

/// In the user's language.
QString changedText(const ChangedMeanwhile& changed);

}  // namespace sorvanto
