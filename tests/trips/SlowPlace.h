// A server behind a line as slow as one through half a country, with every way there and back counted.
#pragma once

#include "RecordsPlace.h"
#include "ServerProxy.h"
#include "TestServer.h"
#include "db/DatabaseFile.h"

#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <gtest/gtest.h>

/// What a test itself asks of the records goes past the line.
class SlowPlace : public support::RecordsPlace {
public:
    SlowPlace() : m_line(support::serverAddress()), m_before(current()) { setCurrent(*this); }
    ~SlowPlace() override { setCurrent(m_before); }
    SlowPlace(const SlowPlace&) = delete;
    SlowPlace& operator=(const SlowPlace&) = delete;

    QString location(const QString&) const override { return m_line.address(); }
    void create(const QString& file) override {
        sorvanto::createSample(file, 300);
        support::makeServerRecords(file);
        QFile::remove(file);
    }
    support::Rows run(const QString&, const QString& statements) override {
        return support::runOnServer(statements);
    }

    support::ServerProxy& line() { return m_line; }
    /// Since the action began that is measured.
    int trips() { return m_trips += m_line.takeTrips(); }
    /// Fails where the action waits more often. A table goes to the standard output, for docs/performance.md.
    template <class Action>
    void expectTrips(const QString& what, int most, Action action) {
        m_line.takeTrips();
        m_line.takeMessages();
        m_trips = 0;
        m_line.delay(thereAndBack);
        QElapsedTimer time;
        time.start();
        action();
        const qint64 milliseconds = time.elapsed();
        m_line.delay(0);
        const int count = trips();
        std::printf("| %s | %d | %lld ms |\n", qPrintable(what), count, milliseconds);
        EXPECT_LE(count, most) << what.toStdString() << " asked:\n" << m_line.takeMessages().toStdString();
    }

private:
    static constexpr int thereAndBack = 20;  // milliseconds
    support::ServerProxy m_line;
    RecordsPlace& m_before;
    int m_trips = 0;
};
