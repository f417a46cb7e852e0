// Which column is what, by the headings of eight languages.
#include "prices/PriceColumns.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

PriceTable table(const QStringList& rows) {
    PriceTable all;
    for (const QString& row : rows) {
        all.rows.emplace_back();
        for (const QString& cell : row.split(u'|'))
            all.rows.back().push_back({cell, false});
    }
    return all;
}

/// Columns of name, NDC, lot, price, AWP, size and unit; a dash for none.
std::string guessed(const QString& headings) {
    const PriceColumns columns = guessedColumns(table({headings}));
    QStringList texts;
    for (const int column : columns.column)
        texts << (column == PriceColumns::none ? u"-"_s : QString::number(column));
    return texts.join(u' ').toStdString();
}

TEST(PriceColumnsTest, HeadingsOfEightLanguagesAreKnown) {
    EXPECT_EQ(guessed(u"Item Description|NDC|Lot No.|Price|AWP|Pack Size|UOM"_s), "0 1 2 3 4 5 6");
    EXPECT_EQ(guessed(u"Artikelbezeichnung|PZN|Ch.-B.|EK-Preis|Listenpreis|Packungsgröße|Einheit"_s),
              "0 1 2 3 4 5 6");
    EXPECT_EQ(guessed(u"Désignation|Code CIP|N° de lot|Prix net|Prix catalogue|Conditionnement|Unité"_s),
              "0 1 2 3 4 5 6");
    EXPECT_EQ(guessed(u"Libellé|Pharmacode|Lot|Prix d’achat|Prix catalogue|Contenance|Unité de mesure"_s),
              "0 1 2 3 4 5 6");
    EXPECT_EQ(guessed(u"Descrizione|Codice AIC|Lotto|Prezzo netto|AWP|Confezione|Unità di misura"_s),
              "0 1 2 3 4 5 6");
    EXPECT_EQ(guessed(u"Denominación|Código Nacional|Lote|Precio|Precio mayorista|Envase|Unidad"_s),
              "0 1 2 3 4 5 6");
    EXPECT_EQ(guessed(u"Designação|CNP|N.º lote|Preço|Preço por grosso|Embalagem|Unidade"_s),
              "0 1 2 3 4 5 6");
    EXPECT_EQ(guessed(u"Наименование|NDC|Серия|Цена, руб.|Оптовая цена|Фасовка|Ед. изм."_s), "0 1 2 3 4 5 6");
}

TEST(PriceColumnsTest, AHeadingThatSaysItExactlyComesFirst) {
    EXPECT_EQ(guessed(u"Price group|Price|Product group|Product name"_s), "3 - - 1 - - -");
    EXPECT_EQ(guessed(u"NAME|PRICE"_s), "0 - - 1 - - -");
}

TEST(PriceColumnsTest, ThePriceOfOneUnitIsNotTakenForThatOfAPack) {
    EXPECT_EQ(guessed(u"Name|Unit price|Pack price"_s), "0 - - 2 - - -");
    EXPECT_EQ(guessed(u"Nom|Prix unitaire|NDC"_s), "0 2 - - - - -");
}

TEST(PriceColumnsTest, HeadingsMayStandBelowATitle) {
    const PriceTable list =
        table({u"Price list of the supplier"_s, u""_s, u"Name|Price"_s, u"Zinc|1,50"_s, u"Talc|2,25"_s});
    const PriceColumns columns = guessedColumns(list);
    EXPECT_EQ(columns.firstRow, 3);
    EXPECT_EQ(columns.markOf(PriceField::price), DecimalMark::comma);
    EXPECT_EQ(headings(list, columns).join(u'|'), u"Name|Price"_s);
}

TEST(PriceColumnsTest, AListWithoutHeadingsIsLeftToTheUser) {
    const PriceTable list = table({u"Zinc oxide|1.234"_s, u"Talc|2.500"_s});
    PriceColumns columns = guessedColumns(list);
    EXPECT_EQ(columns.firstRow, 0);
    EXPECT_FALSE(columns.has(PriceField::name));
    columns.column[static_cast<std::size_t>(PriceField::price)] = 1;
    EXPECT_EQ(findMark(list, columns, PriceField::price).example, u"1.234"_s);
    EXPECT_FALSE(columns.markOf(PriceField::price)) << "asked, not guessed";
}

TEST(PriceColumnsTest, TheMarkOfAPackIsFoundBesideItsUnit) {
    const auto mark = [](const QString& pack) {
        return guessedColumns(table({u"Name|Pack size"_s, u"Zinc|"_s + pack})).markOf(PriceField::packSize);
    };
    EXPECT_EQ(mark(u"2,5 kg"_s), DecimalMark::comma);
    EXPECT_EQ(mark(u"2.5 kg"_s), DecimalMark::point);
    EXPECT_FALSE(mark(u"1.000 g"_s)) << "a kilogram or a gram";
}

}  // namespace
