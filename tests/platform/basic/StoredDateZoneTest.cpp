// A stored date is read the same in every time zone, also where the clocks were put forward at that hour.
#include "platform/basic/Dates.h"

#include <QByteArray>
#include <ctime>
#include <gtest/gtest.h>

namespace {

class StoredDateZone : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override { setZone(GetParam()); }
    void TearDown() override { setZone(m_former.constData()); }

private:
    static void setZone(const char* zone) {
        qputenv("TZ", zone);
        tzset();
    }
    const QByteArray m_former = qgetenv("TZ");
};

TEST_P(StoredDateZone, EveryHourOfTheYearIsRead) {
    const QDateTime first(QDate(1985, 1, 1), QTime(0, 0), Qt::UTC);
    for (int hour = 0; hour < 365 * 24; ++hour) {
        const QDateTime date = first.addSecs(hour * 3600);
        ASSERT_EQ(platform::fromStoredDate(platform::storedDate(date)), date)
            << platform::storedDate(date).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, StoredDateZone,
                         testing::Values("America/Sao_Paulo", "Europe/Zurich", "Australia/Lord_Howe", "UTC"));

}  // namespace
