// A program whose options name a server, and another bench of that server.
#pragma once

#include "Child.h"
#include "TestProgram.h"
#include "TestServer.h"
#include "config/clsOptions.h"
#include "core/DatabaseRescue.h"
#include "records/BatchBook.h"
#include "shared/basMain.h"

#include <QLabel>
#include <QPushButton>
#include <memory>

namespace sorvanto {

using namespace Qt::StringLiterals;

class ServerStartTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        support::makeEmptyServer();
        basMain::Options->DBLocation(support::serverAddress());
        basMain::rescueDatabase = [rescue = std::make_shared<DatabaseRescue>(context, false)](
                                      const QString& place) { return rescue->offer(place); };
    }
    /// The next window that says why there are no records.
    void declineServer() {
        asker.expectModal(u"StartQuestion"_s, [this](QWidget& window) {
            for (const auto* label : window.findChildren<QLabel*>())
                said << label->text();
            support::child<QPushButton>(window, "cmdNone")->click();
        });
    }

    QStringList said;
};

/// Another bench of the same server.
struct OtherBench {
    OtherBench() {
        context.connection = std::make_shared<platform::Connection>();
        context.databaseLocation = [] { return support::serverAddress(); };
    }
    Context context;
    BatchBook log{context};
};

}  // namespace sorvanto
