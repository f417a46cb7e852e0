// Which lots may be meant by what a person typed.
#include "trace/LotLikeness.h"

#include <gtest/gtest.h>

namespace sorvanto {
namespace {

using namespace Qt::StringLiterals;

QStringList similar(const QString& text, const QString& lot) { return similarLots(text, {lot}); }

TEST(LotLikenessTest, CaseBlanksDashesAndLookalikesMakeNoDifference) {
    for (const QString& typed : {u"hc 24118"_s, u"HC-24118"_s, u"HC24II8"_s, u" hc.24l18 "_s, u"HC/24118"_s})
        EXPECT_EQ(similar(typed, u"HC24118"_s), QStringList{u"HC24118"_s}) << typed.toStdString();
    EXPECT_EQ(similar(u"B0O7"_s, u"bOo7"_s), QStringList{u"bOo7"_s});
}

TEST(LotLikenessTest, OneLetterWrongMissingTooManyOrExchanged) {
    for (const QString& typed :
         {u"HC24113"_s, u"HC2418"_s, u"HC241118"_s, u"CH24118"_s, u"HC24181"_s, u"C24118"_s})
        EXPECT_EQ(similar(typed, u"HC24118"_s), QStringList{u"HC24118"_s}) << typed.toStdString();
    for (const QString& typed :
         {u"HC24333"_s, u"HC24"_s, u"24118HC"_s, u"HD24119"_s, u"HC2411899"_s, u"HC47118"_s, u"HC72118"_s})
        EXPECT_EQ(similar(typed, u"HC24118"_s), QStringList()) << typed.toStdString();
}

TEST(LotLikenessTest, InAShortLotOneLetterIsTooMuch) {
    EXPECT_EQ(similar(u"A12"_s, u"A13"_s), QStringList());
    EXPECT_EQ(similar(u"a-12"_s, u"A12"_s), QStringList{u"A12"_s});
    EXPECT_EQ(similar(u"A123"_s, u"A12"_s), QStringList()) << "the other one is short";
}

TEST(LotLikenessTest, TheLotItselfIsNotAmongThem) {
    EXPECT_EQ(similarLots(u"hc24118"_s, {u"HC24118"_s, u"HC24119"_s, u"HC 24118"_s}),
              (QStringList{u"HC24119"_s, u"HC 24118"_s}));
}

TEST(LotLikenessTest, WithoutLettersNothingIsMeant) {
    EXPECT_EQ(similar(u" - "_s, u"--"_s), QStringList());
    EXPECT_EQ(similar(QString(), u"A"_s), QStringList());
}

}  // namespace
}  // namespace sorvanto
