// Each entry of a menu has an access key of its own, in every language.
#include "LanguageTour.h"

#include "platform/widgets/CommandBar.h"

#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

class MenuKeysTest : public LanguageTour, public ::testing::WithParamInterface<int> {
protected:
    int language() const override { return GetParam(); }
    void look(QWidget&, const QString&) override {}

    /// Every caption has one key, which no other has.
    static void expectOneKeyEach(const QStringList& captions, const QString& where) {
        QMap<QString, QString> owners;
        for (const QString& caption : captions) {
            EXPECT_EQ(caption.count('&'), 1) << str(where) << ": " << str(caption);
            const QString key = QKeySequence::mnemonic(caption).toString();
            EXPECT_FALSE(key.isEmpty()) << str(where) << ": " << str(caption);
            EXPECT_FALSE(owners.contains(key))
                << str(where) << ": " << str(caption) << " and " << str(owners.value(key)) << " have one key";
            owners.insert(key, caption);
        }
    }
};

TEST_P(MenuKeysTest, OneForEachEntryUniqueInItsMenu) {
    load();
    for (const char* menu : {"mnuMain", "mnuFile", "mnuHelp", "mnuPrint", "mnuExport", "mnuForms"}) {
        QStringList captions;
        for (const auto& entry : window->bar().band(menu).tools()) {
            if (entry->kind() != platform::ToolKind::Separator)
                captions << entry->caption();
        }
        EXPECT_FALSE(captions.isEmpty()) << menu;
        expectOneKeyEach(captions, u"%1, %2"_s.arg(names[language()], menu));
    }
}

TEST_P(MenuKeysTest, TheLabelDialogsKeysDiffer) {
    QStringList captions;
    for (const char* key : {"&Printer", "To the &right", "&Down", "Print &test sheet"})
        captions << delivered(language()).value(key);
    expectOneKeyEach(captions, names[language()]);
}

INSTANTIATE_TEST_SUITE_P(Languages, MenuKeysTest, ::testing::Range(0, count),
                         [](const auto& row) { return std::string(names[row.param]); });

}  // namespace
}  // namespace languages
