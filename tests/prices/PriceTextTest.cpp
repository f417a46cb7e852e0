// Lists as text: their encodings, their separators, and cells by RFC 4180.
#include "prices/PriceText.h"

#include <QStringEncoder>
#include <gtest/gtest.h>
#include <random>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

/// Cells in brackets, a line for each row.
std::string cells(const ReadTable& read) {
    QString text;
    for (const PriceRow& row : read.table.rows) {
        for (const PriceCell& cell : row)
            text += u'[' + cell.text + u']';
        text += u'\n';
    }
    return text.toStdString();
}

std::string cells(const QString& text, QChar separator = u',') { return cells(separated(text, separator)); }

TEST(PriceTextTest, CellsAreReadByTheRulesOfTheFormat) {
    EXPECT_EQ(cells(u"a,b\r\n1,2\r\n"_s), "[a][b]\n[1][2]\n");
    EXPECT_EQ(cells(u"a,b\n1,2"_s), "[a][b]\n[1][2]\n") << "also without a last line end";
    EXPECT_EQ(cells(u"a,b\r1,2\r"_s), "[a][b]\n[1][2]\n");
    EXPECT_EQ(cells(u",\n,,"_s), "[][]\n[][][]\n");
    EXPECT_EQ(cells(u"a\n\nb"_s), "[a]\n\n[b]\n") << "an empty line stays, so that rows keep their numbers";
    EXPECT_EQ(cells(u"\"a, b\",\"say \"\"no\"\"\",\"two\r\nlines\""_s), "[a, b][say \"no\"][two\r\nlines]\n");
    EXPECT_EQ(cells(u"\"\",x"_s), "[][x]\n");
    EXPECT_EQ(cells(u"3\" tube,\"a\"b"_s), "[3\" tube][ab]\n");
    EXPECT_EQ(cells(u"a;b|c\td"_s, u';'), "[a][b|c\td]\n");
}

TEST(PriceTextTest, AQuotationMarkThatNothingClosesIsToldWithItsLine) {
    const ReadTable read = separated(u"a,b\nc,\"d\ne,f\n"_s, u',');
    EXPECT_EQ(read.fault, PriceFault::openQuotation);
    EXPECT_EQ(read.detail, u"2"_s);
    EXPECT_TRUE(read.table.rows.empty()) << "nothing of such a file is taken";
}

TEST(PriceTextTest, TheSeparatorIsTheOneThatMakesTheRowsEven) {
    EXPECT_EQ(detectedSeparator(u"Name,Price\nA,1.50\nB,2\n"_s), u',');
    EXPECT_EQ(detectedSeparator(u"Name;Preis\nA;1,50\nB;2,25\n"_s), u';');
    EXPECT_EQ(detectedSeparator(u"A;1,50;x\nB;2,25;y\n"_s), u';') << "though the commas are as even";
    EXPECT_EQ(detectedSeparator(u"Name\tPrice\nA, B, C\t1\nD\t2\n"_s), u'\t');
    EXPECT_EQ(detectedSeparator(u"Name|Price\nA, B|1\nD|2\n"_s), u'|');
    EXPECT_EQ(detectedSeparator(u"\"A;B;C\",1\n\"D;E;F\",2\n"_s), u',') << "what is quoted doesn't count";
    EXPECT_EQ(detectedSeparator(u"sep=|\na;b\nc;d\n"_s), u'|');
    EXPECT_EQ(detectedSeparator(u"alone\n"_s), u',');
    EXPECT_EQ(detectedSeparator(u"Name^Price\nA: fine^1.50\nB^2\n"_s), u'^')
        << "where none of the usual ones parts";
    EXPECT_EQ(detectedSeparator(u"Name\u001FPrice\nA\u001F1.50\n"_s), QChar(0x1F));
    EXPECT_EQ(detectedSeparator(u"Name,Price\nA: a ~ b,1\nC: d ~ e,2\n"_s), u',')
        << "a usual one comes first";
    EXPECT_EQ(cells(u"sep=;\r\na;b\r\n"_s, u';'), "\n[a][b]\n") << "the line that says it is no row";
}

TEST(PriceTextTest, EncodingsAreToldApart) {
    const QString german = u"Bezeichnung;Preis\nZinkoxid für Öl;28,50 €\n"_s;
    const QString russian = u"Название;Цена\nЦинка оксид;28,50\nёлка;1\n"_s;
    const auto check = [](const QString& text, const char* name, TextEncoding encoding) {
        QStringEncoder encoder(name);
        const QByteArray bytes = encoder(text);
        EXPECT_EQ(detectedEncoding(bytes), encoding) << name;
        EXPECT_EQ(decoded(bytes, encoding).toStdString(), text.toStdString()) << name;
    };
    for (const QString& text : {german, russian, u"plain,1\n"_s})
        check(text, "UTF-8", TextEncoding::utf8);
    for (const QString& text : {german, u"plain,1\n"_s}) {
        check(text, "UTF-16LE", TextEncoding::utf16Little);
        check(text, "UTF-16BE", TextEncoding::utf16Big);
    }
    check(german, "windows-1252", TextEncoding::windows1252);
    check(russian, "windows-1251", TextEncoding::windows1251);
    check(u"crème à l'œillet, décembre\n"_s, "windows-1252", TextEncoding::windows1252);
    EXPECT_EQ(decoded("\xEF\xBB\xBFName", detectedEncoding("\xEF\xBB\xBFName")), u"Name"_s);
    const QByteArray marked =
        QByteArray("\xFF\xFE") + QByteArray("\x1F\x04\x40\x04", 4);  // two Cyrillic letters
    EXPECT_EQ(detectedEncoding(marked), TextEncoding::utf16Little);
    EXPECT_EQ(decoded(marked, TextEncoding::utf16Little), u"Пр"_s);
}

TEST(PriceTextTest, WhatWasWrittenIsReadBackWhateverItHolds) {
    std::mt19937 random(20261122);  // NOLINT(cert-msc51-cpp): the same tables each time
    const QString letters = u"ab1., ;|\t\"\n\r'€Ж"_s;
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 3000; ++round) {
        const QChar separator = u",;\t|"_s.at(below(4));
        const QString lineEnd = QStringList{u"\n"_s, u"\r\n"_s, u"\r"_s}.at(below(3));
        QString written, expected;
        for (int rows = 1 + below(5); rows > 0; --rows) {
            for (int columns = 2 + below(4), column = 0; column < columns; ++column) {
                QString cell;
                for (int length = below(6); length > 0; --length)
                    cell += letters.at(below(static_cast<int>(letters.size())));
                expected += u'[' + cell + u']';
                const bool plain = below(2) == 0 && !cell.startsWith(u'"') && !cell.contains(separator) &&
                                   !cell.contains(u'\n') && !cell.contains(u'\r');
                written += (column > 0 ? QString(separator) : QString()) +
                           (plain ? cell : u'"' + QString(cell).replace(u"\""_s, u"\"\""_s) + u'"');
            }
            expected += u'\n';
            written += rows > 1 || below(2) == 0 ? lineEnd : QString();
        }
        ASSERT_EQ(cells(written, separator), expected.toStdString()) << written.toStdString();
    }
}

TEST(PriceTextTest, ListsAreBoundedAndCanBeStopped) {
    EXPECT_EQ(separated(u"a,b\n"_s.repeated(mostPriceRows), u',').fault, PriceFault::none);
    EXPECT_EQ(separated(u"a,b\n"_s.repeated(mostPriceRows + 1), u',').fault, PriceFault::tooLarge);
    EXPECT_EQ(separated(u","_s.repeated(mostPriceColumns), u',').fault, PriceFault::tooLarge);
    EXPECT_EQ(separated(u"\n\n"_s, u',').fault, PriceFault::empty);
    int asked = 0;
    const ReadTable read = separated(u"a,b\n"_s.repeated(5000), u',', [&](double done) {
        EXPECT_GE(done, 0);
        EXPECT_LE(done, 1);
        return ++asked < 4;
    });
    EXPECT_EQ(read.fault, PriceFault::stopped);
    EXPECT_EQ(asked, 4);
}

TEST(PriceTextTest, ShortCyrillicWordsAreNoAccentsOfTheWest) {
    const auto bytes = [](const QString& text) {
        QStringEncoder encoder("windows-1251");
        return QByteArray(encoder.encode(text));
    };
    EXPECT_EQ(detectedEncoding(bytes(u"1;мг\n2;мл\n"_s)), TextEncoding::windows1251);
    EXPECT_EQ(detectedEncoding("1;Cr\xE8me\n2;G\xE9l\n"), TextEncoding::windows1252);
}

}  // namespace
