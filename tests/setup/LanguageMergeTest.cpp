// A delivered language file over a user's own.
#include "setup/LanguageMerge.h"

#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>
#include <ostream>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

platform::XmlDocumentPtr documentOf(const QString& entries) {
    auto document = platform::XmlDocument::create();
    EXPECT_TRUE(document->loadXML(u"<Translations Language=\"German\">"_s + entries + u"</Translations>"_s));
    return document;
}

QString entry(const QString& english, const QString& translated) {
    return u"<Translate English=\"%1\" Translated=\"%2\"/>"_s.arg(english, translated);
}

const QString saved = entry("Save", "Speichern");
const QString made = entry("New", "Neu");
const QString lot = entry("Lot", "Charge");

struct Example {
    const char* name;
    QString target, expected;
};

TEST(LanguageMergeTest, WhatNobodyChangedIsBroughtUpToDate) {
    const FormerTexts former{{"Save", {"Sichern", "Ablegen"}}};
    const std::vector<Example> examples{
        {"nothing to do", saved + made + lot, saved + made + lot},
        {"a new text is added", saved + lot, saved + lot + made},
        {"an unchanged one is brought up to date", entry("Save", "Sichern") + made + lot, saved + made + lot},
        {"also from an older version", entry("Save", "Ablegen") + made + lot, saved + made + lot},
        {"a user's own wording stays", entry("Save", "Los!") + made + lot,
         entry("Save", "Los!") + made + lot},
        {"so does a user's own text", saved + made + lot + entry("x", "y"),
         saved + made + lot + entry("x", "y")},
        {"an emptied text stays empty", saved + made + entry("Lot", ""), saved + made + entry("Lot", "")},
        {"the first entry of a text counts", entry("Save", "Los!") + entry("Save", "Sichern") + made + lot,
         entry("Save", "Los!") + entry("Save", "Sichern") + made + lot},
        {"a damaged entry stays", u"<Translate Translated=\"?\"/>"_s + saved + made + lot,
         u"<Translate Translated=\"?\"/>"_s + saved + made + lot},
        {"marks are kept", saved + made + lot + entry("a &lt;b&gt; &amp; &quot;c&quot;&#10;", "d&#9;e"),
         saved + made + lot + entry("a &lt;b&gt; &amp; &quot;c&quot;&#10;", "d&#9;e")},
    };
    for (const Example& example : examples) {
        const auto target = documentOf(example.target);
        const bool changed = mergeLanguage(*documentOf(saved + made + lot), *target, former);
        EXPECT_EQ(target->xml(), documentOf(example.expected)->xml()) << example.name;
        EXPECT_EQ(changed, example.target != example.expected) << example.name;
    }
}

TEST(LanguageMergeTest, AFileWithoutTranslationsIsRefused) {
    auto foreign = platform::XmlDocument::create();
    ASSERT_TRUE(foreign->loadXML(u"<Configuration/>"_s));
    EXPECT_THROW(mergeLanguage(*documentOf(saved), *foreign, {}), platform::RuntimeError);
    EXPECT_EQ(foreign->xml(), "<Configuration/>");
}

TEST(LanguageMergeTest, FormerTextsAreThoseOfTheLanguage) {
    const QByteArray json = R"({"French": {"Save": ["Garder"]}, "German": {"Save": ["Sichern", "Ablegen"]}})";
    EXPECT_EQ(formerTexts(json, "German").value("Save"), (QStringList{"Sichern", "Ablegen"}));
    EXPECT_TRUE(formerTexts(json, "Swiss").isEmpty());
    EXPECT_TRUE(formerTexts("{ broken", "German").isEmpty());
    EXPECT_TRUE(formerTexts({}, "German").isEmpty());
}

}  // namespace
}  // namespace sorvanto
