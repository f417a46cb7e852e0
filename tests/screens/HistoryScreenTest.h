// The screens on a database that keeps its history, with chemicals, formulas and batches from before it began.
#pragma once

#include "ScreenTest.h"

#include "platform/widgets/Boxes.h"

#include <QFile>

class HistoryScreenTest : public ScreenTest {
protected:
    void seed() override {
        seedLogs();
        QFile history(QStringLiteral(SORVANTO_SOURCE_DIR "/data/history.sql"));
        ASSERT_TRUE(history.open(QIODevice::ReadOnly));
        sql(QString::fromUtf8(history.readAll()));
    }
};
