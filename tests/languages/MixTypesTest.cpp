// Mix types are shown in the user's language; what is stored and exchanged keeps the English names and the codes.
#include "LanguageFile.h"
#include "TestProgram.h"
#include "mixer/MixTables.h"
#include "mixer/ctlSorvanto.h"

#include <gtest/gtest.h>

namespace languages {
namespace {

class MixTypesTest : public support::TestProgram {};

TEST_F(MixTypesTest, AreShownInEveryLanguage) {
    sorvanto::ctlSorvanto control;
    for (int language = 0; language < count; ++language) {
        const QMap<QString, QString> texts = delivered(language);
        control.setSettings(1, static_cast<std::int16_t>(language), 0, deliveredPath(language));
        QStringList wanted;
        for (const QString& name : sorvanto::mixTypeNames())
            wanted << texts.value(name, "missing");
        EXPECT_EQ(control.MixTypes(), wanted) << names[language];
        EXPECT_EQ(QSet<QString>(wanted.begin(), wanted.end()).size(), 10) << names[language];
    }
}

TEST_F(MixTypesTest, AreStoredInEnglish) {
    sorvanto::ctlSorvanto control;
    control.setSettings(1, 2, 0, deliveredPath(2));
    EXPECT_EQ(control.MixTypes().at(2), "Salbe");
    EXPECT_EQ(sorvanto::mixTypeNames().at(2), "Ointment");
}

}  // namespace
}  // namespace languages
