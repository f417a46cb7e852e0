// New records with their history, and a connection to them that keeps history as the program does.
#pragma once

#include "RecordsPlace.h"
#include "db/DatabaseFile.h"
#include "history/HistoryChain.h"
#include "history/HistoryReplay.h"
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

/// A server's keep their history in any case, those of a file where they are made with it.
inline void createRecords(const QString& path) {
    support::RecordsPlace& place = support::RecordsPlace::current();
    if (place.location(path) == path)
        createDatabase(path);
    else
        place.create(path);
}

class HistoryTest : public ::testing::Test {
protected:
    void SetUp() override {
        path = folder.filePath(QStringLiteral("h.mdb"));
        createRecords(path);
        connection = open();
    }
    std::shared_ptr<platform::Connection> open(const QString& person = QStringLiteral("rkent@bench2")) {
        auto opened = std::make_shared<platform::Connection>();
        opened->open(QStringLiteral("Data Source=") + place().location(path));
        if (sqlite3* file = platform::sqlite::handleOf(opened->engine()))
            sqlite3_exec(file, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);  // no power goes here
        keepHistory(*opened, {person, QStringLiteral("9.9")});
        return opened;
    }
    void run(const char* statement) { connection->execute(QString::fromUtf8(statement)); }
    static support::RecordsPlace& place() { return support::RecordsPlace::current(); }
    /// Straight on the records, as another program would.
    QString outside(const QString& statements) const {
        return support::rowsText(place().run(path, statements));
    }
    /// Of the proof that the history is whole and the records are what it says.
    QStringList proofProblems() const {
        return chainProblems(connection->engine()) + recordProblems(connection->engine());
    }

    QTemporaryDir folder;
    QString path;
    std::shared_ptr<platform::Connection> connection;
};

}  // namespace sorvanto
