// The units that convert exactly, by every word that is used for them.
#include "prices/PackUnits.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

struct Unit {
    QString kind;
    UnitRatio size;  ///< in the kind's smallest step: gram, millilitre, piece
};

struct UnitWords {
    QStringView kind;
    UnitRatio size;
    QStringView words;
};

constexpr std::uint64_t tenMicrogramsOfAGrain = 6479891;  // a grain is 64.79891 mg by definition

/// Texts as `written` leaves them. A unit in another language is another word for it, never another unit.
constexpr std::array units{
    UnitWords{
        u"g",
        {1, 3},
        u"kg kgs kilogram kilograms kilogramm kilogramme kilogrammes chilogrammo quilograma kilogramo кг"},
    UnitWords{u"g",
              {1, 0},
              u"g gm gms gram grams gramm gramme grammes grammo grammi gramo gramos grama gramas г грамм"},
    UnitWords{u"g",
              {1, -3},
              u"mg mgs milligram milligrams milligramm milligramme milligrammes milligrammo milligrammi "
              u"miligramo miligramos miligrama miligramas мг"},
    UnitWords{u"g",
              {1, -6},
              u"mcg mcgs ug μg microgram micrograms mikrogramm microgramme microgrammes microgrammo "
              u"microgramo microgramos micrograma microgramas мкг"},
    UnitWords{u"g", {tenMicrogramsOfAGrain, -8}, u"grain grains grano grani granos grão grãos гран"},
    UnitWords{
        u"ml", {1, 3}, u"l lt ltr lit litr liter liters litre litres litro litros litri л литр литра литров"},
    UnitWords{u"ml", {1, 2}, u"dl"},
    UnitWords{u"ml", {1, 1}, u"cl"},
    UnitWords{u"ml",
              {1, 0},
              u"ml mls cc ccm cm3 milliliter milliliters millilitre millilitres millilitro millilitri "
              u"mililitro mililitros мл см3"},
    UnitWords{u"each",
              {},
              u"each ea pc pcs piece pieces stück stk pièce pièces pezzo pezzi peça peças pieza piezas шт"},
    UnitWords{u"capsule",
              {},
              u"caps cap capsule capsules kaps kapsel kapseln gélu gélule gélules capsula cáps cápsula "
              u"cápsulas капс капсула капсулы капсул"},
    UnitWords{u"tablet",
              {},
              u"tabs tab tablet tablets tabl tablette tabletten compr comprimé comprimés compressa "
              u"compresse comp comprimido comprimidos cpr табл таблетка таблетки таблеток"},
    UnitWords{u"ampoule",
              {},
              u"amp amps ampoule ampoules ampul ampuls ampulle ampullen fiala fiale ampolla ampollas ampola "
              u"ampolas амп ампула ампулы ампул"},
    UnitWords{u"vial", {}, u"vial vials flac dfl flno frinj fl-amp фл"},
    UnitWords{u"drop",
              {},
              u"drop drops gtt gtts gtte gttes tr tropfen goutte gouttes gocc goccia gocce gota gotas капля "
              u"капли капель"},
    UnitWords{u"iu", {}, u"iu ui ie ме"},
    UnitWords{u"meq", {}, u"meq мэкв"},
};

/// A grain here and a gram there; ounces, pounds and gallons differ by kind, trade and country.
constexpr QStringView ambiguousWords =
    u"gr grs гр oz ozs ounce ounces floz lb lbs pound pounds dr dram drams pt pint pints qt quart quarts gal gallon gallons";

/// Without what people write differently for the same: case, width, blanks, dots.
QString written(const QString& unit) {
    QString plain = unit.normalized(QString::NormalizationForm_KC).toCaseFolded();
    plain.removeIf([](QChar sign) { return sign.isSpace() || sign == u'.'; });
    return plain.normalized(QString::NormalizationForm_C);
}

const QHash<QString, Unit>& knownUnits() {
    static const QHash<QString, Unit> known = [] {
        QHash<QString, Unit> all;
        for (const UnitWords& one : units)
            for (const QStringView word : one.words.split(u' '))
                all.insert(word.toString(), {one.kind.toString(), one.size});
        return all;
    }();
    return known;
}

bool isAmbiguous(const QString& word) {
    static const QStringList list = ambiguousWords.toString().split(u' ');
    static const QSet<QString> words(list.begin(), list.end());
    return words.contains(word);
}

bool isMeasure(const QString& kind) { return kind == "g"_L1 || kind == "ml"_L1; }

}  // namespace

UnitComparison compareUnits(const QString& unit, const QString& other) {
    const QString one = written(unit), two = written(other);
    if (isAmbiguous(one) || isAmbiguous(two))
        return {UnitsFit::ambiguous, {}, {}, (isAmbiguous(one) ? unit : other).trimmed()};
    if (one.isEmpty() || two.isEmpty())
        return {};
    if (one == two)
        return {UnitsFit::convertible, {}, {}, {}};
    const auto from = knownUnits().constFind(one), to = knownUnits().constFind(two);
    if (from == knownUnits().constEnd() || to == knownUnits().constEnd())
        return {};
    if (from->kind == to->kind)
        return {UnitsFit::convertible, from->size, to->size, {}};
    if (isMeasure(from->kind) && isMeasure(to->kind))
        return {UnitsFit::differentKinds, {}, {}, {}};
    return {};
}

}  // namespace sorvanto
