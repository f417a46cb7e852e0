// What the program says about a failure is there in every language.
#include "LanguageFile.h"
#include "core/ProblemTexts.h"

#include <gtest/gtest.h>

namespace languages {
namespace {

TEST(ProblemSentencesTest, EachIsInEveryLanguage) {
    for (int language = 0; language < 8; ++language) {
        const QMap<QString, QString> texts = delivered(language);
        for (const QString& sentence : sorvanto::problemSentences()) {
            EXPECT_TRUE(texts.contains(sentence)) << names[language] << ": " << qPrintable(sentence);
            EXPECT_EQ(texts.value(sentence) == sentence, language == 0)
                << names[language] << qPrintable(sentence);
        }
    }
}

}  // namespace
}  // namespace languages
