// The English manual names each tool and each dialog by its caption, or there is a reason why it need not.
#include "LanguageTour.h"

#include "manual/Manual.h"
#include "platform/widgets/CommandBar.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

using namespace sorvanto;

/// All pages as a reader sees them.
QString manualText() {
    QStringList texts;
    for (const Manual manual(manualFolder(), u"English"_s); const ManualPage& page : manual.pages()) {
        for (const ManualSection& section : page.sections())
            texts << section.heading << section.text;
    }
    return texts.join('\n'_L1).replace(QChar::Nbsp, ' '_L1).simplified();
}

bool isNamed(const QString& manual, const QString& caption) {
    const QRegularExpression word(u"(?<![\\w])"_s + QRegularExpression::escape(caption) + u"(?![\\w])"_s);
    return word.match(manual).hasMatch();
}

/// Captions that no page names, and why.
const QMap<QString, const char*> unnamed{
    {u"Sorvanto Control Panel"_s, "the program itself, the title of boxes that have none of their own"},
};

/// Windows whose titles name the record on show, and what they are called without it.
const QMap<QString, QString> withRecord{{u"HistoryWindow"_s, u"History"_s},
                                        {u"NewLotWindow"_s, u"New Lot"_s}};

class NamedInManualTest : public LanguageTour {
protected:
    int language() const override { return 0; }
    void look(QWidget& shown, const QString& name) override {
        if (&shown == window.get())
            return;
        const QString kind = QString::fromLatin1(shown.metaObject()->className()).section("::"_L1, -1);
        classes << kind;
        const QString title = withRecord.value(kind, shown.windowTitle());
        if (!title.isEmpty() && !name.startsWith("preview-"_L1) && !name.startsWith("report-"_L1))
            titles.insert(title, name);
    }

    QMap<QString, QString> titles;  ///< where each was seen
    QSet<QString> classes;
};

TEST_F(NamedInManualTest, EachTool) {
    load();
    const QString manual = manualText();
    int tools = 0;
    for (const auto& band : window->bar().bands()) {
        for (const auto& tool : band->tools()) {
            if (tool->kind() == platform::ToolKind::Separator || tool->kind() == platform::ToolKind::Host)
                continue;
            const QString caption = withoutKey(tool->caption().isEmpty() ? tool->toolTip() : tool->caption());
            ++tools;
            EXPECT_TRUE(isNamed(manual, caption) || unnamed.contains(caption))
                << str(tool->name() + ": \""_L1 + caption + "\" is on no page"_L1);
        }
    }
    EXPECT_GT(tools, 40);
}

/// Dialogs that a tour of the program does not meet, with their captions.
const QMap<QString, QString> beside{
    {u"ModalForm"_s, {}},  // the base of others
    {u"StartQuestion"_s, u"Put it back"_s},
    {u"DraftReader"_s, u"Unsaved text"_s},
    {u"frmWizard"_s, {}},  // pictures and names of languages alone
};

TEST_F(NamedInManualTest, EachDialog) {
    tour();
    const QString manual = manualText();
    EXPECT_GT(titles.size(), 15);
    for (auto title = titles.begin(); title != titles.end(); ++title)
        EXPECT_TRUE(isNamed(manual, title.key()) || unnamed.contains(title.key()))
            << str(title.value() + ": \""_L1 + title.key() + "\" is on no page"_L1);
    for (const QString& caption : beside)
        EXPECT_TRUE(caption.isEmpty() || isNamed(manual, caption)) << str(caption) << " is on no page";
}

TEST_F(NamedInManualTest, TheTourMeetsEachDialogThatTheSourcesHave) {
    static const QRegularExpression dialog(
        uR"(class (\w+)(?: final)? : public (?:QDialog|(?:platform::)?ModalForm)\b)"_s);
    tour();
    int dialogs = 0;
    QDirIterator files(QLatin1String(SORVANTO_SOURCE_DIR) + u"/src"_s, {u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        for (auto all = dialog.globalMatch(QString::fromUtf8(file.readAll())); all.hasNext(); ++dialogs) {
            const QString name = all.next().captured(1);
            EXPECT_TRUE(classes.contains(name) || beside.contains(name)) << str(name);
        }
    }
    EXPECT_GT(dialogs, 10);
}

}  // namespace
}  // namespace languages
