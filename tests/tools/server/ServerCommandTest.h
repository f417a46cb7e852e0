// sorvanto-db as it is called, with the records of a server of the tests' own, empty at first.
#pragma once

#include "TestServer.h"
#include "db/Commands.h"
#include "history/HistorySeal.h"
#include "platform/data/Connection.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>
#include <gtest/gtest.h>

namespace sorvanto {

class ServerCommandTest : public ::testing::Test {
protected:
    ServerCommandTest() { support::makeEmptyServer(); }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files); }
    QString bench() const { return support::serverAddress(); }
    QString owner() const { return support::serverOwnerAddress(); }

    int run(const QStringList& arguments, const platform::Cancelled& cancelled = {}) {
        out.clear();
        err.clear();
        QTextStream outStream(&out), errStream(&err);
        return runCommand(arguments, outStream, errStream, cancelled);
    }
    void expectDone(const QStringList& arguments) {
        EXPECT_EQ(run(arguments), 0) << qPrintable(arguments.join(u' ') + u'\n' + out + err);
    }
    support::Rows inFile(const QString& name, const QString& statements) const {
        return support::runSql(path(name), statements);
    }
    QString told(const QString& statement) const {
        return support::rowsText(support::runOnServer(statement)).trimmed();
    }
    /// As the program does, which seals what it writes.
    void work(const QString& location, const QStringList& statements,
              const QString& who = QStringLiteral("rkent@bench1")) const {
        platform::Connection connection;
        connection.open(QLatin1String("Data Source=") + location);
        keepHistory(connection, {who, QStringLiteral("1.9")});
        for (const QString& statement : statements)
            connection.execute(statement);
    }

    QString out, err;

private:
    QTemporaryDir m_folder;
};

}  // namespace sorvanto
