// Texts as a person finds them: case, accents and look-alike marks make no difference, letters do.
#include "platform/basic/Folding.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using platform::folded;
using platform::foldedWords;

TEST(Folding, CaseAndAccentsMakeNoDifference) {
    EXPECT_EQ(folded(u"Crème à l'Urée"_s), folded(u"CREME A L'UREE"_s));
    EXPECT_EQ(folded(u"Größe"_s), u"grosse"_s);
    EXPECT_EQ(folded(u"Ёлка"_s), folded(u"елка"_s));
    EXPECT_EQ(folded(u"SEÑAL ÇA"_s), u"senal ca"_s);
}

TEST(Folding, MarksThatLookAlikeAreOne) {
    EXPECT_EQ(folded(u"Whitfield’s"_s), u"whitfield's"_s);
    EXPECT_EQ(folded(u"5\u00A0mg\u202Fx"_s), u"5 mg x"_s);
    EXPECT_EQ(folded(u"0‑1 – 2"_s), u"0-1 - 2"_s);
}

TEST(Folding, LettersAndDigitsStay) {
    EXPECT_NE(folded(u"cream"_s), folded(u"crean"_s));
    EXPECT_EQ(folded(u"0.075 %"_s), u"0.075 %"_s);
    EXPECT_TRUE(folded({}).isEmpty());
}

TEST(Folding, WordsStandBetweenBlanks) {
    EXPECT_EQ(foldedWords(u"  Magic   MOUTH "_s), (QStringList{u"magic"_s, u"mouth"_s}));
    EXPECT_TRUE(foldedWords(u"   "_s).isEmpty());
}

}  // namespace
