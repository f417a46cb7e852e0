// The screens on a database that keeps its history, with chemicals, formulas and batches from before it began.
#pragma once

#include "Announced.h"
#include "ScreenTest.h"

#include "platform/widgets/Boxes.h"

#include <optional>

class HistoryScreenTest : public ScreenTest {
protected:
    void seed() override {
        seedLogs();
        place().beginHistory(databasePath());
    }
    void TearDown() override {
        m_heard.reset();
        ScreenTest::TearDown();
    }
    /// The window, and an ear for what it announces from now on.
    void start() {
        load();
        m_heard.emplace();
    }
    const sorvanto::Happening& heard() const { return m_heard->last(); }
    std::string announced() const { return str(heard().text); }

private:
    std::optional<support::Announced> m_heard;
};
