// Names, order and thinning out of the copies of a database.
#include "core/CopyShelf.h"
#include "TempProgramFolder.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using sorvanto::CopyShelf;

class CopyShelfTest : public ::testing::Test {
protected:
    void put(const QString& name) const { folder.write(name, "copy"); }
    QStringList names() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }
    /// The copy that the shelf would make at that moment.
    QString make(const QDateTime& now) const {
        const QString path = shelf.pathFor(now);
        put(QFileInfo(path).fileName());
        shelf.thinOut();
        return QFileInfo(path).fileName();
    }

    support::TempProgramFolder folder;
    CopyShelf shelf{folder.path(), u"3f2a9c0100112233445566778899aabb"_s};
};

TEST_F(CopyShelfTest, ANameTellsIdentityNumberAndMoment) {
    const QDateTime now(QDate(2026, 3, 7), QTime(14, 5, 9));
    EXPECT_EQ(make(now), "sorvanto-3f2a9c01-0001-2026-03-07-140509.mdb");
    EXPECT_EQ(make(now), "sorvanto-3f2a9c01-0002-2026-03-07-140509.mdb");
    put("sorvanto-3f2a9c01-12345-2026-03-07-140509.mdb");
    EXPECT_EQ(make(now), "sorvanto-3f2a9c01-12346-2026-03-07-140509.mdb");
}

TEST_F(CopyShelfTest, TheNewestOfADayFourteenDaysAndAYearOfMonthsStay) {
    for (QDate day(2024, 1, 1); day <= QDate(2026, 3, 7); day = day.addDays(1)) {
        make(QDateTime(day, QTime(8, 0)));
        make(QDateTime(day, QTime(18, 0)));
    }
    const auto kept = shelf.copies();
    ASSERT_EQ(kept.size(), 14U + 10U) << "two of the twelve months end among the days";
    for (const auto& copy : kept)
        EXPECT_EQ(copy.made.time(), QTime(18, 0));
    EXPECT_EQ(kept.front().made.date(), QDate(2026, 3, 7));
    EXPECT_EQ(kept[13].made.date(), QDate(2026, 2, 22));
    EXPECT_EQ(kept[14].made.date(), QDate(2026, 1, 31));
    EXPECT_EQ(kept.back().made.date(), QDate(2025, 4, 30));
}

TEST_F(CopyShelfTest, AWrongClockNeverMakesANewCopyTheFirstToGo) {
    for (int day = 1; day <= 20; ++day)
        make(QDateTime(QDate(2031, 1, day), QTime(8, 0)));  // the clock was years ahead
    for (int day = 1; day <= 7; ++day) {
        const QString name = make(QDateTime(QDate(2026, 3, day), QTime(8, 0)));
        EXPECT_TRUE(names().contains(name)) << name.toStdString();
        EXPECT_EQ(QFileInfo(shelf.copies().front().path).fileName(), name);
    }
}

TEST_F(CopyShelfTest, OnlyItsOwnFilesGo) {
    for (int day = 1; day <= 16; ++day)
        put(u"sorvanto-2026-02-%1.mdb"_s.arg(day, 2, 10, QChar('0')));
    put("sorvanto-fedcba98-0001-2020-01-01-080000.mdb");
    put("sorvanto-before-update-from-1-2026-01-01-080000.mdb");
    put("sorvanto-before-the-move.mdb");
    make(QDateTime(QDate(2026, 3, 7), QTime(8, 0)));
    EXPECT_EQ(names().size(), 1 + 13 + 3) << names().join(' ').toStdString();
    EXPECT_TRUE(names().contains("sorvanto-fedcba98-0001-2020-01-01-080000.mdb"));
    EXPECT_TRUE(names().contains("sorvanto-before-the-move.mdb"));
    EXPECT_FALSE(names().contains("sorvanto-2026-02-03.mdb"));
}

}  // namespace
