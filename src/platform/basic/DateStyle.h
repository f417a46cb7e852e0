// How one locale writes a date and a time of day: the default text, and reading it back.
// Order, separators, widths and halves of the day are the locale's; digits are always "0" to "9" and
// months always numbers, so that every text reads back. The toolkit's texts don't: years of two digits, names of months.
#pragma once

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>
#include <optional>

namespace platform {

/// The year that a number of that many digits means: of two digits, 00 to 29 belong to this century and 30 to 99 to
/// the last.
int fullYear(int number, int width);

class DateStyle {
public:
    explicit DateStyle(const QLocale& locale);

    QString dateText(QDate date) const;
    QString timeText(QTime time) const;
    /// Without the seconds.
    QString shortTimeText(QTime time) const;

    /// Date, time or both; numbers alone decide their roles. Nothing when the text is neither.
    std::optional<QDateTime> read(const QString& text) const;

    /// A date as a person types it, with or without a time of day: in the locale's order with any of
    /// "." "-" "/", or year, month and day with a year of four digits. Never in another order. `pivot`
    /// is the first of the hundred years that a year of two digits may mean.
    std::optional<QDateTime> readTyped(const QString& text, int pivot) const;

private:
    /// The numbers of a text and what stands between them.
    struct Scan;

    QString timeOfDay(QTime time, bool seconds) const;
    void learnDate(const QString& pattern);
    void learnTime(const QString& pattern);
    bool takeHalf(const QString& word, Scan& scan) const;
    bool takeBetween(const QString& between, Scan& scan) const;
    std::optional<Scan> scan(const QString& text) const;
    bool isTime(const Scan& scan) const;
    QDate readDate(const Scan& scan) const;
    QDate readTypedDate(const Scan& scan, int pivot) const;
    QTime readTime(const Scan& scan, qsizetype first) const;

    QString m_order;      ///< "d", "M" and "y" in the locale's order
    QList<int> m_widths;  ///< least digits of each
    QString m_dateSeparator;
    QString m_dateEnd;  ///< the full stop that some locales put behind a date
    QString m_timeSeparator;
    int m_hourWidth = 1;
    bool m_halves = false;  ///< twelve hours with AM and PM
    bool m_halfInFront = false;
    QString m_am;
    QString m_pm;
};

}  // namespace platform
