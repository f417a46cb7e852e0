// The list of records: what the filter lets through, how it sorts, what a key or a click chooses.
#include "platform/widgets/RecordList.h"
#include "Settle.h"
#include "Waiting.h"
#include "platform/widgets/Boxes.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;
using support::settle;

class RecordLists : public testing::Test {
protected:
    void SetUp() override {
        list.setColumns(
            {{u"Name"_s}, {u"Quantity"_s, ListKind::Number, 80}, {u"Made"_s, ListKind::Date, 100}});
        list.setCountText([](int shown, int all) { return u"%1 of %2"_s.arg(shown).arg(all); });
        list.resize(600, 300);
        list.show();
        list.activateWindow();
        ASSERT_TRUE(support::becomesActive(&list));
        fill();
    }
    void fill() {
        const auto day = [](int number) { return QDateTime(QDate(2026, 3, number), QTime(14, 5)); };
        list.collect({{7, {u"Magic Mouthwash"_s, qint64{240}, day(9)}},
                      {3, {u"Crème à l'Urée"_s, qint64{30}, day(10)}},
                      {5, {u"capsaicin"_s, 12.5, QVariant()}},
                      {9, {u"Capsaicin"_s, QVariant(), day(2)}}});
        list.showCollected();
    }
    std::vector<std::int64_t> keys() const {
        std::vector<std::int64_t> result;
        for (int row = 0; row < list.model().rowCount(); ++row)
            result.push_back(list.model().keyAt(row));
        return result;
    }
    void type(const QString& text) {
        box().clear();
        QTest::keyClicks(&box(), text);
    }
    QLineEdit& box() { return *list.findChild<QLineEdit*>(u"txtListFilter"_s); }
    QTableView& rows() { return *list.findChild<QTableView*>(u"grdRecordList"_s); }
    QString countLine() { return list.findChild<QLabel*>(u"lblListCount"_s)->text(); }
    QString shown(int row, int column) { return rows().model()->index(row, column).data().toString(); }

    RecordList list;
};

using Keys = std::vector<std::int64_t>;

TEST_F(RecordLists, SortByTheFirstColumnAndThenByKey) { EXPECT_EQ(keys(), (Keys{5, 9, 3, 7})); }

TEST_F(RecordLists, NumbersSortByValueAndWhatIsMissingStandsFirst) {
    rows().sortByColumn(1, Qt::AscendingOrder);
    EXPECT_EQ(keys(), (Keys{9, 5, 3, 7}));
    rows().sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(keys(), (Keys{7, 3, 5, 9}));
}

TEST_F(RecordLists, DatesSortByTime) {
    rows().sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(keys(), (Keys{5, 9, 7, 3}));
}

TEST_F(RecordLists, AClickOnAHeadingSorts) {
    QHeaderView& head = *rows().horizontalHeader();
    const QPoint heading(head.sectionViewportPosition(1) + 20, head.height() / 2);
    QTest::mouseClick(head.viewport(), Qt::LeftButton, {}, heading);
    EXPECT_EQ(list.model().sortColumn(), 1);
}

TEST_F(RecordLists, TheFilterFindsAnyPartOfAnyColumn) {
    type(u"uree"_s);
    EXPECT_EQ(keys(), (Keys{3}));
    type(u"24"_s);
    EXPECT_EQ(keys(), (Keys{7}));
    EXPECT_EQ(countLine(), u"1 of 4"_s);
    type(u"CAPS 12"_s);
    EXPECT_EQ(keys(), (Keys{5})) << "each word, wherever it stands";
    type(u"l'u"_s);
    EXPECT_EQ(keys(), (Keys{3})) << "an apostrophe is a letter like any other";
    type(u"nothing"_s);
    EXPECT_TRUE(keys().empty());
    box().clear();
    EXPECT_EQ(keys().size(), 4u);
}

TEST_F(RecordLists, ATextNeverReachesIntoTheNextColumn) {
    list.collect({{1, {u"ab"_s, qint64{12}, QVariant()}}});
    list.showCollected();
    type(u"b1"_s);
    EXPECT_TRUE(keys().empty());
}

TEST_F(RecordLists, ALineEndInATextIsABlank) {
    list.collect({{1, {u"two\r\nlines"_s, QVariant(), QVariant()}}});
    list.showCollected();
    EXPECT_EQ(shown(0, 0), u"two  lines"_s);
}

TEST_F(RecordLists, AClickChoosesARow) {
    const QSignalSpy chosen(&list, &RecordList::chosen);
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {},
                      rows().visualRect(rows().model()->index(2, 1)).center());
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toLongLong(), 3);
}

TEST_F(RecordLists, EnterInTheFilterChoosesTheFirstHit) {
    const QSignalSpy chosen(&list, &RecordList::chosen);
    list.startFiltering();
    type(u"magic"_s);
    QTest::keyClick(&box(), Qt::Key_Return);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toLongLong(), 7);
}

TEST_F(RecordLists, EnterWithoutAHitChoosesNothing) {
    const QSignalSpy chosen(&list, &RecordList::chosen);
    type(u"nothing"_s);
    QTest::keyClick(&box(), Qt::Key_Return);
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(RecordLists, DownGoesFromTheFilterIntoTheRows) {
    const QSignalSpy chosen(&list, &RecordList::chosen);
    list.startFiltering();
    QTest::keyClick(&box(), Qt::Key_Down);
    EXPECT_TRUE(rows().hasFocus());
    QTest::keyClick(&rows(), Qt::Key_Down);
    QTest::keyClick(&rows(), Qt::Key_Enter);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toLongLong(), 9);
}

TEST_F(RecordLists, EscTakesTheFilterAwayAndThenLeaves) {
    const QSignalSpy left(&list, &RecordList::left);
    type(u"magic"_s);
    QTest::keyClick(&box(), Qt::Key_Escape);
    EXPECT_TRUE(list.filter().isEmpty());
    EXPECT_EQ(left.count(), 0);
    QTest::keyClick(&box(), Qt::Key_Escape);
    EXPECT_EQ(left.count(), 1);
}

TEST_F(RecordLists, NewRowsKeepFilterPlaceAndRecord) {
    list.setCurrentKey(3);
    type(u"a"_s);
    fill();
    EXPECT_EQ(list.filter(), u"a"_s);
    EXPECT_EQ(keys(), (Keys{5, 9, 3, 7}));
    EXPECT_EQ(rows().currentIndex().row(), 2);
}

TEST_F(RecordLists, TheRecordOnShowIsBroughtIntoView) {
    std::vector<KeyedRow> many;
    for (int i = 1; i <= 500; ++i)
        many.push_back({i, {u"Name %1"_s.arg(i, 4, 10, QChar(u'0')), qint64{i}, QVariant()}});
    list.collect(many);
    list.showCollected();
    list.setCurrentKey(400);
    settle();
    EXPECT_TRUE(rows().viewport()->rect().contains(rows().visualRect(rows().model()->index(399, 0))));
    const int top = rows().verticalScrollBar()->value();
    list.collect(many);
    list.showCollected();
    settle();
    EXPECT_EQ(rows().verticalScrollBar()->value(), top);
}

TEST_F(RecordLists, RowsThatAreCollectedStandAsideUntilTheyAreShown) {
    list.collect({{1, {u"new"_s, QVariant(), QVariant()}}});
    EXPECT_EQ(keys().size(), 4u);
    list.dropCollected();
    list.showCollected();
    EXPECT_TRUE(keys().empty());
}

class DayRange : public RecordLists {
protected:
    void SetUp() override {
        RecordLists::SetUp();
        list.setDayRange(2, u"From"_s, u"To"_s);
    }
    DateBox& box(const QString& name) { return *list.findChild<DateBox*>(name); }
    /// As typed; nothing takes the day away.
    void choose(const QString& name, const QString& text) {
        auto& edit = *box(name).findChild<QLineEdit*>();
        edit.selectAll();
        text.isEmpty() ? QTest::keyClick(&edit, Qt::Key_Delete) : QTest::keyClicks(&edit, text);
    }
    void from(const QString& text) { choose(u"txtListFrom"_s, text); }
    void to(const QString& text) { choose(u"txtListTo"_s, text); }
};

TEST_F(DayRange, LetsThroughTheDaysFromAndTo) {
    from(u"3/9/2026"_s);
    EXPECT_EQ(keys(), (Keys{3, 7})) << "a row without a date is of no day";
    to(u"3/9/2026"_s);
    EXPECT_EQ(keys(), Keys{7}) << "the whole day";
    EXPECT_EQ(countLine(), u"1 of 4"_s);
    from({});
    EXPECT_EQ(keys(), (Keys{9, 7}));
    to({});
    EXPECT_EQ(keys(), (Keys{5, 9, 3, 7}));
}

TEST_F(DayRange, GoesTogetherWithTheFilterAndLastsThroughAReading) {
    type(u"capsaicin"_s);
    from(u"3/1/2026"_s);
    EXPECT_EQ(keys(), Keys{9});
    fill();
    EXPECT_EQ(keys(), Keys{9});
}

TEST_F(DayRange, ADayThatIsStillBeingTypedChangesNothing) {
    from(u"13"_s);
    EXPECT_EQ(keys().size(), 4U);
}

TEST_F(DayRange, IsNamedAndGoesWithTheColumns) {
    EXPECT_EQ(box(u"txtListFrom"_s).findChild<QLineEdit*>()->placeholderText(), u"From"_s);
    EXPECT_EQ(box(u"txtListTo"_s).findChild<QLineEdit*>()->accessibleName(), u"To"_s);
    from(u"3/9/2026"_s);
    list.setColumns({{u"Name"_s}});
    EXPECT_FALSE(box(u"txtListFrom"_s).isVisible());
    EXPECT_EQ(box(u"txtListFrom"_s).text(), QString());
    list.collect({{1, {u"Magic Mouthwash"_s}}});
    list.showCollected();
    EXPECT_EQ(keys(), Keys{1});
}

TEST_F(DayRange, StandsBelowTheFilterInANarrowList) {
    const auto below = [this] {
        settle();
        return box(u"txtListFrom"_s).mapTo(&list, QPoint()).y() >
               RecordLists::box().mapTo(&list, QPoint()).y();
    };
    EXPECT_FALSE(below());
    list.resize(340, 300);
    EXPECT_TRUE(below());
}

}  // namespace
