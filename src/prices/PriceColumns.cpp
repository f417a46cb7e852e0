#include "prices/PriceColumns.h"

#include "platform/basic/Folding.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int rowsLookedAt = 20;

struct HeadingWords {
    PriceField field;
    const char16_t* texts;  ///< parted by bars; folded before they are compared
};

// A heading that is one of these texts as a whole is meant before one that has it among its words.
constexpr HeadingWords headingWords[] = {
    {PriceField::awp,
     u"awp|average wholesale price|average wholesale|grosshandelspreis|listenpreis|aep|prix catalogue|"
     u"prix de gros|prezzo all'ingrosso|precio mayorista|preço por grosso|оптовая цена|опт"},
    {PriceField::ndc,
     u"ndc|ndc code|ndc no|ndc number|national drug code|pzn|pharmazentralnummer|pharmacode|cip|cip13|"
     u"code cip|aic|codice aic|minsan|codigo nacional|cnp"},
    {PriceField::lot,
     u"lot|lot no|lot number|batch|batch no|batch number|charge|chargennummer|ch b|numéro de lot|"
     u"n de lot|lotto|numero lotto|lote|número de lote|n lote|серия|номер серии|партия|номер партии"},
    {PriceField::packUnit,
     u"unit|units|uom|unit of measure|pack unit|einheit|mengeneinheit|packungseinheit|unité|"
     u"unité de mesure|unità|unità di misura|um|unidad|unidad de medida|unidade|"
     u"unidade de medida|единица|ед|ед изм|единица измерения"},
    {PriceField::packSize,
     u"pack size|package size|packsize|size|pack|package|pkg size|quantity|qty|content|contents|"
     u"packungsgröße|packungsgrösse|packung|packgröße|menge|inhalt|gebinde|gebindegröße|"
     u"conditionnement|contenance|taille|quantité|confezione|formato|quantità|contenuto|envase|"
     u"tamaño|presentación|cantidad|contenido|embalagem|tamanho|apresentação|quantidade|"
     u"conteúdo|фасовка|упаковка|количество|кол во|объем"},
    {PriceField::price,
     u"price|cost|net price|pack price|your price|list price|preis|nettopreis|einkaufspreis|"
     u"ek preis|ek|packungspreis|kosten|prix|prix d'achat|prix net|coût|prezzo|prezzo netto|"
     u"costo|precio|precio neto|coste|preço|preço líquido|custo|цена|стоимость"},
    {PriceField::name,
     u"name|product|product name|description|item|item description|chemical|chemical name|ingredient|"
     u"article|bezeichnung|artikel|artikelbezeichnung|artikelname|produkt|stoff|substanz|wirkstoff|"
     u"nom|produit|désignation|libellé|substance|nome|prodotto|descrizione|denominazione|articolo|"
     u"sostanza|nombre|producto|descripción|denominación|artículo|sustancia|produto|descrição|"
     u"designação|artigo|substância|название|наименование|товар|продукт|вещество"},
};
// Of one unit: the system's own measure may be another, so nobody may take it for the price of a pack.
constexpr const char16_t* unitPrices =
    u"unit price|price per unit|unit cost|cost per unit|stückpreis|preis je einheit|"
    u"einzelpreis|prix unitaire|prezzo unitario|precio unitario|preço unitário|"
    u"цена за единицу";

QString heading(const QString& text) {
    QString words = platform::folded(text);
    for (QChar& c : words) {
        if (!c.isLetterOrNumber() && c != u'\'')
            c = u' ';
    }
    return words.simplified();
}

/// 2 for one of the texts, 1 for a heading that has one among its words.
int likeness(const QString& words, const char16_t* texts) {
    int best = 0;
    for (const QString& text : QString::fromUtf16(texts).split(u'|')) {
        const QString known = heading(text);
        if (words == known)
            return 2;
        if ((u' ' + words + u' ').contains(u' ' + known + u' '))
            best = 1;
    }
    return best;
}

struct Guess {
    int likeness;
    PriceField field;
    int column;
};

std::vector<Guess> guesses(const PriceRow& row) {
    std::vector<Guess> all;
    for (int column = 0; column < static_cast<int>(row.size()); ++column) {
        const PriceCell& cell = row[static_cast<std::size_t>(column)];
        const QString words = heading(cell.text);
        if (cell.number || words.isEmpty() || likeness(words, unitPrices) > 0)
            continue;
        for (const HeadingWords& known : headingWords) {
            if (const int like = likeness(words, known.texts); like > 0)
                all.push_back({like, known.field, column});
        }
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Guess& a, const Guess& b) { return a.likeness > b.likeness; });
    return all;
}

PriceColumns columnsBy(const std::vector<Guess>& guessed) {
    PriceColumns columns;
    for (const Guess& guess : guessed) {
        int& column = columns.column[static_cast<std::size_t>(guess.field)];
        const bool taken =
            std::find(columns.column.begin(), columns.column.end(), guess.column) != columns.column.end();
        if (column == PriceColumns::none && !taken)
            column = guess.column;
    }
    return columns;
}

int known(const PriceColumns& columns) {
    return static_cast<int>(priceFields) -
           static_cast<int>(std::count(columns.column.begin(), columns.column.end(), PriceColumns::none));
}

}  // namespace

PriceColumns guessedColumns(const PriceTable& table) {
    PriceColumns best;
    const auto rows = std::min<std::size_t>(table.rows.size(), rowsLookedAt);
    for (std::size_t row = 0; row < rows; ++row) {
        PriceColumns columns = columnsBy(guesses(table.rows[row]));
        columns.firstRow = static_cast<int>(row) + 1;
        if (known(columns) >= 2 && known(columns) > known(best))
            best = columns;
    }
    for (std::size_t field = 0; field < priceFields; ++field)
        findMark(table, best, static_cast<PriceField>(field));
    return best;
}

MarkFinding findMark(const PriceTable& table, PriceColumns& columns, PriceField field) {
    if (!isAmount(field) || !columns.has(field))
        return {};
    MarkFinding finding =
        detectedMark(table, columns.firstRow, columns.of(field), field == PriceField::packSize);
    columns.mark[static_cast<std::size_t>(field)] = finding.mark;
    return finding;
}

QStringList headings(const PriceTable& table, const PriceColumns& columns) {
    QStringList texts;
    const int row = std::max(columns.firstRow - 1, 0);
    for (int column = 0; column < table.columns(); ++column)
        texts << (static_cast<std::size_t>(row) < table.rows.size()
                      ? PriceTable::text(table.rows[static_cast<std::size_t>(row)], column)
                      : QString());
    return texts;
}

}  // namespace sorvanto
