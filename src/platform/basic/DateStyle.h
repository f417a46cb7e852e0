// How one locale writes a date and a time of day: the default text, and reading it back.
// Digits are always "0" to "9" and months always numbers, so that every text reads back.
#pragma once

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>
#include <optional>

namespace platform {

class DateStyle {
public:
    explicit DateStyle(const QLocale& locale);

    QString dateText(QDate date) const;
    QString timeText(QTime time) const;

    /// Date, time or both; numbers alone decide their roles. Nothing when the text is neither.
    std::optional<QDateTime> read(const QString& text) const;

private:
    /// A piece of a pattern: a field letter (d, M, y, H, h, m, s, a) with its width, or literal text.
    struct Piece {
        char16_t field = 0;
        int width = 0;
        QString literal;
    };
    /// The numbers of a text and what stands between them.
    struct Scan;

    static QList<Piece> pieces(const QString& pattern);
    QString joined(const QList<Piece>& pieces, QDate date, QTime time) const;
    static QString firstSeparator(const QList<Piece>& pieces);
    bool takeHalf(const QString& word, Scan& scan) const;
    bool isLiteral(const QString& word) const;
    std::optional<Scan> scan(const QString& text) const;
    bool isTime(const Scan& scan) const;
    QDate readDate(const Scan& scan) const;
    static QTime readTime(const Scan& scan, qsizetype first);

    QList<Piece> m_date;
    QList<Piece> m_time;
    QString m_order;  ///< "dMy" in the locale's order
    QString m_dateSeparator;
    QString m_timeSeparator;
    QString m_am;
    QString m_pm;
};

}  // namespace platform
