// A checked copy of the records of a server, read while that one can't be reached.
#pragma once

#include <QDateTime>
#include <QString>

namespace sorvanto {

/// Of the command line: the newest copy is read at once. setup reads it, which sees nothing of this layer.
inline const QString copyOption = QStringLiteral("--copy");

struct StandIn {
    QString server;  ///< the address that it is read in place of
    QString file;
    QDateTime made;
};

}  // namespace sorvanto
