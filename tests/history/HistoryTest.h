// A new database file with its history, and a connection to it that keeps history as the program does.
#pragma once

#include "TestDatabase.h"
#include "db/DatabaseFile.h"
#include "history/HistorySeal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"
#include "platform/data/sqlite/FileEngine.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace sorvanto {

class HistoryTest : public ::testing::Test {
protected:
    void SetUp() override {
        path = folder.filePath(QStringLiteral("h.mdb"));
        createDatabase(path);
        connection = open();
    }
    std::shared_ptr<platform::Connection> open(const QString& person = QStringLiteral("rkent@bench2")) {
        auto opened = std::make_shared<platform::Connection>();
        opened->open(QStringLiteral("Data Source=") + path);
        sqlite3_exec(platform::sqlite::handleOf(opened->engine()), "PRAGMA synchronous = OFF", nullptr,
                     nullptr,
                     nullptr);  // no power goes here
        keepHistory(*opened, {person, QStringLiteral("9.9")});
        return opened;
    }
    void run(const char* statement) { connection->execute(QString::fromUtf8(statement)); }
    /// Straight on the file, as another program would.
    QString outside(const QString& statements) const {
        return support::rowsText(support::runSql(path, statements));
    }

    QTemporaryDir folder;
    QString path;
    std::shared_ptr<platform::Connection> connection;
};

}  // namespace sorvanto
