// The functions of PostgreSQL's client library, which brings a score of further libraries along: a program that
// works on a file never loads them.
#include "platform/basic/LazyLibrary.h"

#include <libpq-fe.h>

namespace {

platform::LazyLibrary& clientLibrary() {
    static platform::LazyLibrary library(QStringLiteral("pq"), 5);
    return library;
}

}  // namespace

SORVANTO_LAZY(clientLibrary(), PQcancel, 3)
SORVANTO_LAZY(clientLibrary(), PQclear, 1)
SORVANTO_LAZY(clientLibrary(), PQcmdStatus, 1)
SORVANTO_LAZY(clientLibrary(), PQcmdTuples, 1)
SORVANTO_LAZY(clientLibrary(), PQconnectPoll, 1)
SORVANTO_LAZY(clientLibrary(), PQconnectStartParams, 3)
SORVANTO_LAZY(clientLibrary(), PQconnectionNeedsPassword, 1)
SORVANTO_LAZY(clientLibrary(), PQconninfoFree, 1)
SORVANTO_LAZY(clientLibrary(), PQconninfoParse, 2)
SORVANTO_LAZY(clientLibrary(), PQconsumeInput, 1)
SORVANTO_LAZY(clientLibrary(), PQenterPipelineMode, 1)
SORVANTO_LAZY(clientLibrary(), PQerrorMessage, 1)
SORVANTO_LAZY(clientLibrary(), PQexec, 2)
SORVANTO_LAZY(clientLibrary(), PQexitPipelineMode, 1)
SORVANTO_LAZY(clientLibrary(), PQfinish, 1)
SORVANTO_LAZY(clientLibrary(), PQflush, 1)
SORVANTO_LAZY(clientLibrary(), PQfname, 2)
SORVANTO_LAZY(clientLibrary(), PQfreeCancel, 1)
SORVANTO_LAZY(clientLibrary(), PQfreemem, 1)
SORVANTO_LAZY(clientLibrary(), PQftable, 2)
SORVANTO_LAZY(clientLibrary(), PQftablecol, 2)
SORVANTO_LAZY(clientLibrary(), PQftype, 2)
SORVANTO_LAZY(clientLibrary(), PQgetCancel, 1)
SORVANTO_LAZY(clientLibrary(), PQgetResult, 1)
SORVANTO_LAZY(clientLibrary(), PQgetisnull, 3)
SORVANTO_LAZY(clientLibrary(), PQgetlength, 3)
SORVANTO_LAZY(clientLibrary(), PQgetvalue, 3)
SORVANTO_LAZY(clientLibrary(), PQisBusy, 1)
SORVANTO_LAZY(clientLibrary(), PQnfields, 1)
SORVANTO_LAZY(clientLibrary(), PQntuples, 1)
SORVANTO_LAZY(clientLibrary(), PQparameterStatus, 2)
SORVANTO_LAZY(clientLibrary(), PQpipelineSync, 1)
SORVANTO_LAZY(clientLibrary(), PQresultErrorField, 2)
SORVANTO_LAZY(clientLibrary(), PQresultStatus, 1)
SORVANTO_LAZY(clientLibrary(), PQsendDescribePrepared, 2)
SORVANTO_LAZY(clientLibrary(), PQsendPrepare, 5)
SORVANTO_LAZY(clientLibrary(), PQsendQuery, 2)
SORVANTO_LAZY(clientLibrary(), PQsendQueryParams, 8)
SORVANTO_LAZY(clientLibrary(), PQsetErrorVerbosity, 2)
SORVANTO_LAZY(clientLibrary(), PQsetNoticeReceiver, 3)
SORVANTO_LAZY(clientLibrary(), PQsetnonblocking, 2)
SORVANTO_LAZY(clientLibrary(), PQsocket, 1)
SORVANTO_LAZY(clientLibrary(), PQstatus, 1)
