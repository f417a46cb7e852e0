// What a server's states of failure are to the program.
#include "platform/data/postgres/SqlState.h"
#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>

namespace platform::postgres {
namespace {

struct Case {
    const char* state;
    std::int32_t number;
};

TEST(SqlState, EachFailureHasTheNumberThatItHasForAFile) {
    for (const Case& one : {Case{"23503", error::general},
                            Case{"23001", error::general},
                            Case{"23514", error::dataMismatch},
                            Case{"23502", error::dataMismatch},
                            Case{"22001", error::dataMismatch},
                            Case{"22P02", error::dataMismatch},
                            Case{"42804", error::dataMismatch},
                            Case{"55P03", error::permissionDenied},
                            Case{"57014", error::permissionDenied},
                            Case{"40P01", error::permissionDenied},
                            Case{"40001", error::permissionDenied},
                            Case{"25006", error::permissionDenied},
                            Case{"42501", error::permissionDenied},
                            Case{"53300", error::permissionDenied},
                            Case{"53100", error::diskFull},
                            Case{"08006", error::deviceIo},
                            Case{"57P01", error::deviceIo},
                            Case{"57P03", error::deviceIo},
                            Case{"58030", error::deviceIo},
                            Case{"XX001", error::deviceIo},
                            Case{"", error::deviceIo},
                            Case{"??", error::deviceIo},
                            Case{"42601", error::statement},
                            Case{"42P01", error::statement},
                            Case{"42703", error::statement},
                            Case{"0A000", error::statement}})
        EXPECT_EQ(failureOf(one.state).number, one.number) << one.state;
}

TEST(SqlState, OnOpeningItIsToldWhetherToTryAgain) {
    for (const Case& one :
         {Case{"", error::cannotOpen}, Case{"28P01", error::cannotOpen}, Case{"28000", error::cannotOpen},
          Case{"3D000", error::cannotOpen}, Case{"57P03", error::general}, Case{"53300", error::general},
          Case{"42P01", error::general}})
        EXPECT_EQ(openFailureOf(one.state).number, one.number) << one.state;
}

TEST(SqlState, IsFoundAtTheEndOfASentenceInAnyLanguage) {
    for (const char* words : {"connection to server on socket \"/run/.s.PGSQL.5432\" failed: FATAL:  57P03\n",
                              "подключиться к серверу не удалось: ВАЖНО:  57P03", "57P03"})
        EXPECT_EQ(stateAtEnd(words), "57P03") << words;
    for (const char* words :
         {"", "connection refused", "Is the server running there: yes", "x: 57P0", "x: 57p03"})
        EXPECT_EQ(stateAtEnd(words), "") << words;
}

TEST(SqlState, TheLastAttemptCountsAndNotTheHintBehindIt) {
    EXPECT_EQ(
        stateAtEnd(lastAttempt("connection to server at \"a\" (::1), port 1 failed: Connection refused\n"
                               "\tIs the server running on that host and accepting TCP/IP connections?\n"
                               "connection to server at \"a\" (127.0.0.1), port 1 failed: FATAL:  28P01\n"
                               "password retrieved from file \"/home/r: kent/.pgpass\"\n")),
        "28P01");
    EXPECT_EQ(
        lastAttempt("Verbindung zum Server auf »a« fehlgeschlagen: Wurzelzertifikat »x« existiert nicht\n"
                    "Stellen Sie die Datei bereit.\n"),
        "Verbindung zum Server auf »a« fehlgeschlagen: Wurzelzertifikat »x« existiert nicht");
    EXPECT_EQ(lastAttempt(""), "");
}

}  // namespace
}  // namespace platform::postgres
