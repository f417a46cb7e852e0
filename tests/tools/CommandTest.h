// sorvanto-db as it is called, without a process of its own.
#pragma once

#include "db/Commands.h"

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <gtest/gtest.h>

namespace sorvanto {

class CommandTest : public ::testing::Test {
protected:
    /// Its exit code; what it said is in out and err.
    int run(const QStringList& arguments) {
        out.clear();
        err.clear();
        QTextStream outStream(&out);
        QTextStream errStream(&err);
        return runCommand(arguments, outStream, errStream);
    }

    QString out, err;
};

}  // namespace sorvanto
