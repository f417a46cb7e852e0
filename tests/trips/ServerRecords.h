// Base of the tests of record classes over a line to a server that can be slow, or break.
#pragma once

#include "../records/RecordsTest.h"
#include "ServerProxy.h"
#include "TestServer.h"
#include "db/DatabaseFile.h"
#include "history/HistorySeal.h"

class ServerRecords : public RecordsTest {
protected:
    /// rows: how many each table has at least.
    void makeRecords(int rows) {
        const QString file = folder.path("sample.mdb");
        sorvanto::createSample(file, rows);
        support::makeServerRecords(file);
        proxy = std::make_unique<support::ServerProxy>(support::serverAddress());
        useSigning();
    }
    void TearDown() override {
        sorvanto::basMain::gConnection->close();
        RecordsTest::TearDown();
    }
    void connect() {
        sorvanto::basMain::gConnection = std::make_shared<platform::Connection>();
        sorvanto::basMain::gConnection->open("Data Source=" + proxy->address());
        sorvanto::keepHistory(*sorvanto::basMain::gConnection);
    }
    sorvanto::clsLogPtr addLog() {
        return sorvanto::clsLog().addLog(document("<Formula><ID>2</ID></Formula>"), results());
    }

    std::unique_ptr<support::ServerProxy> proxy;
};
