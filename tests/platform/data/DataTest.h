// Base of the data tests: a sample database of its own, opened the way the program opens it; in a file, and by a second
// test program on a server.
#pragma once

#include "DataStore.h"
#include "db/DatabaseFile.h"
#include "platform/basic/Currency.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Recordset.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace platform {

using namespace Qt::StringLiterals;

/// The failure of an action; number 0 when it went through.
template <class Action>
RuntimeError failureOf(Action action) {
    try {
        action();
    } catch (const RuntimeError& failure) {
        return failure;
    }
    return RuntimeError(0, QString());
}

class DataTest : public ::testing::Test {
protected:
    void SetUp() override {
        sorvanto::createSample(path());
        m_store = support::openStore(path());
        open();
    }
    /// Only of what is kept in a file.
    QString path(const QString& name = u"test.mdb"_s) const { return m_folder.filePath(name); }
    static QString source(const QString& path) {
        return u"Provider=Any;Data Source=%1;Persist Security Info=False"_s.arg(path);
    }
    void open() {
        connection = std::make_shared<Connection>();
        connection->open(source(m_store->location()));
    }
    QString location() const { return m_store->location(); }
    RecordsetPtr rows(const QString& statement, CursorLocation location = CursorLocation::Default,
                      LockType lock = LockType::ReadOnly) const {
        RecordsetPtr set = Recordset::create();
        set->open(statement, connection, lock, location);
        return set;
    }
    RecordsetPtr editable(const QString& statement) const {
        return rows(statement, CursorLocation::Client, LockType::Optimistic);
    }
    /// Straight from where the records are kept: fields joined by "|".
    QString stored(const QString& statement) const { return support::rowsText(m_store->run(statement)); }
    /// Runs statements there, as another program would.
    void elsewhere(const QString& statements) const { m_store->run(statements); }
    support::DataStore& store() const { return *m_store; }
    std::int32_t numberOf(const QString& statement) const {
        return failureOf([&] { connection->execute(statement); }).number();
    }

    ConnectionPtr connection;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<support::DataStore> m_store;
};

}  // namespace platform
