// Reading of typed numbers against a second reader: one pattern for each system's customs, built from the
// rules alone, asked about 100,000 drawn texts each.
#include "platform/widgets/NumberInput.h"

#include <QRegularExpression>
#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace {

using namespace platform;

struct Customs {
    const char* locale;
    const char* decimal;
    const char* group;  ///< inside of a character class; empty: blanks alone
};

const Customs customs[] = {{"de_DE", ",", "."},      {"fr_FR", ",", ""},  {"fr_CH", ",", ""},
                           {"it_IT", ",", "."},      {"es_ES", ",", "."}, {"pt_PT", ",", ""},
                           {"pt_BR", ",", "."},      {"ru_RU", ",", ""},  {"en_US", ".", ","},
                           {"de_CH", ".", "'\u2019"}};

const QString blanks = QString::fromUtf8(" \u00a0\u202f\u2009");

/// Nothing where a text has to be refused.
class SecondReader {
public:
    explicit SecondReader(const Customs& c) {
        const QString decimal = "[" + QString(c.decimal) + "]", group = QString::fromUtf8(c.group);
        const auto grouped = [](const QString& marks) {
            return "[1-9][0-9]{0,2}(?:[" + marks + "][0-9]{3})+";
        };
        const QString byBlanks = grouped(blanks), byMarks = group.isEmpty() ? byBlanks : grouped(group);
        const QString signs = QString::fromUtf8("([-+\u2212]?)");
        m_plain.setPattern("^" + signs + "([0-9]*|" + byBlanks + "|" + byMarks + ")(?:" + decimal +
                           "([0-9]*))?$");
        m_grouping = group == "." || group == ",";
        m_comma = QString(c.decimal) == ",";
        if (m_grouping)
            m_twoWays.setPattern("^.?[0-9]*[" + group + "][0-9]{3}$");
        if (m_comma)
            m_point.setPattern("^" + signs + "([0-9]*|" + byBlanks + ")[.]((?![0-9]{3}$)[0-9]*)$");
    }
    std::optional<std::string> read(const QString& text) const {
        const QString inner = text.trimmed();
        if (m_grouping && m_twoWays.match(inner).hasMatch())
            return std::nullopt;
        for (const QRegularExpression* pattern : {&m_plain, &m_point}) {
            if (pattern == &m_point && !m_comma)
                continue;
            const auto match = pattern->match(inner);
            if (!match.hasMatch())
                continue;
            const QString whole = digits(match.captured(2)), fraction = match.captured(3);
            if (whole.isEmpty() && fraction.isEmpty())
                continue;
            QString number = whole.isEmpty() ? "0" : whole;
            if (!fraction.isEmpty())
                number += "." + fraction;
            const bool negative = !match.captured(1).isEmpty() && match.captured(1) != "+";
            return ((negative ? "-" : "") + number).toStdString();
        }
        return std::nullopt;
    }

private:
    static QString digits(const QString& text) {
        QString result;
        for (const QChar c : text)
            if (c >= '0' && c <= '9')
                result += c;
        return result;
    }

    QRegularExpression m_plain, m_point, m_twoWays;
    bool m_grouping = false, m_comma = false;
};

class Drawn {
public:
    explicit Drawn(unsigned seed) : m_random(seed) {}
    QString text() { return below(2) ? wild() : likely(); }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    QChar oneOf(const QString& marks) { return marks.at(below(static_cast<int>(marks.size()))); }
    QString some(int digits) {
        QString text;
        for (int i = 0; i < digits; ++i)
            text += QChar('0' + below(10));
        return text;
    }
    /// Anything that a keyboard or a clipboard may hold.
    QString wild() {
        static const QString marks = QString::fromUtf8(
            "0123456789012345678900.,.,'\u2019 \u00a0\u202f\u2009\t\n\r\u2003\u3000-+\u2212e/%\u0664");
        QString text;
        for (int left = below(10); left > 0; --left)
            text += oneOf(marks);
        return text;
    }
    /// A number in somebody's customs.
    QString likely() {
        static const QString groups = QString::fromUtf8("., \u00a0\u202f\u2009'\u2019\t\n");
        QString text = below(8) ? QString() : QString(oneOf(QString::fromUtf8("-+\u2212")));
        text += some(1 + below(4));
        const QChar group = oneOf(groups);
        for (int left = below(3); left > 0; --left)
            text += (below(20) ? group : oneOf(groups)) + some(below(12) ? 3 : below(5));
        if (below(2))
            text += oneOf(".,") + some(below(5));
        if (below(10) == 0)
            text = oneOf(groups) + text + oneOf(groups);
        return text;
    }

    std::mt19937 m_random;
};

TEST(NumberReading, AgreesWithASecondReaderInEachSystemsCustoms) {
    unsigned seed = 20261122;
    for (const Customs& c : customs) {
        const QLocale locale(c.locale);
        const SecondReader second(c);
        Drawn drawn(++seed);
        int read = 0;
        for (int i = 0; i < 100000; ++i) {
            const QString text = drawn.text();
            const TypedNumber found = readTypedNumber(text, locale);
            const auto expected = second.read(text);
            const bool isNumber = found.kind == TypedNumber::Kind::Number;
            ASSERT_EQ(isNumber, expected.has_value()) << c.locale << " <" << qPrintable(text) << ">";
            if (isNumber) {
                ASSERT_EQ(found.number.toStdString(), *expected)
                    << c.locale << " <" << qPrintable(text) << ">";
            }
            read += isNumber ? 1 : 0;
        }
        EXPECT_GT(read, 10000) << c.locale;
        EXPECT_LT(read, 90000) << c.locale;
    }
}

}  // namespace
