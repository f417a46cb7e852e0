// The translator's script tells the same as the program.
#include "LanguageFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace languages {
namespace {

struct Told {
    int code = -1;
    QString text;
};

Told script(const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QString(SORVANTO_SOURCE_DIR) + "/scripts/languages.sh", arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAll())};
}

class ScriptTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (int language = 0; language < count; ++language)
            ASSERT_TRUE(QFile::copy(deliveredPath(language),
                                    folder.filePath(QString(names[language]) + "Translation.xml")));
    }
    /// The German file with one text exchanged.
    void change(const QByteArray& from, const QByteArray& to) {
        QByteArray content = deliveredFile(2);
        ASSERT_TRUE(content.contains(from));
        QFile file(folder.filePath("GermanTranslation.xml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content.replace(from, to));
    }
    Told check() const { return script({"--check", "--folder", folder.path()}); }

    QTemporaryDir folder;
};

TEST_F(ScriptTest, NothingIsMissingInTheDeliveredFiles) {
    const Told told = script({"--check"});
    EXPECT_EQ(told.code, 0) << told.text.toStdString();
    EXPECT_EQ(told.text.count(" 0 missing"), count) << told.text.toStdString();
    EXPECT_EQ(told.text.count(" 0 unused"), count) << told.text.toStdString();
    EXPECT_EQ(told.text.count(" 0 blank"), count) << told.text.toStdString();
}

TEST_F(ScriptTest, AMissingTextEndsWithAnError) {
    change("<Translate English=\"Zoom\" Translated=\"Zoom\"/>\n", "");
    const Told told = check();
    EXPECT_EQ(told.code, 1);
    EXPECT_TRUE(told.text.contains("missing: 'Zoom'")) << told.text.toStdString();
}

TEST_F(ScriptTest, ALostPartOfAMessageEndsWithAnError) {
    change("Translated=\"Mischer %1\"", "Translated=\"Mischer\"");
    const Told told = check();
    EXPECT_EQ(told.code, 1);
    EXPECT_TRUE(told.text.contains("fault:")) << told.text.toStdString();
}

TEST_F(ScriptTest, ABlankTextIsCountedAndNoError) {
    change("Translated=\"Mischer %1\"", "Translated=\"\"");
    const Told told = check();
    EXPECT_EQ(told.code, 0) << told.text.toStdString();
    EXPECT_TRUE(told.text.contains(" 1 blank")) << told.text.toStdString();
}

TEST_F(ScriptTest, AFileThatCannotBeReadIsNamed) {
    change("</Translations>", "");
    const Told told = check();
    EXPECT_EQ(told.code, 1);
    EXPECT_TRUE(told.text.contains("GermanTranslation.xml: can not be read")) << told.text.toStdString();
}

}  // namespace
}  // namespace languages
