// What stays English in every language is told in the glossary of the manual. In Russian such a word shows by its script.
#include "LanguageTour.h"

#include "manual/Manual.h"

#include <QAbstractButton>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QRegularExpression>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

const QRegularExpression latin(u"[A-Za-z]{2}"_s), russian(u"[\\x{0400}-\\x{04FF}]"_s);

/// The words of the glossary's table: those in marks of code in the first column.
QStringList glossary() {
    QFile page(QStringLiteral(SORVANTO_SOURCE_DIR "/docs/manual/Russian/glossary.md"));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    static const QRegularExpression word(u"`([^`]+)`"_s);
    QStringList words;
    for (const QString& line : QString::fromUtf8(page.readAll()).split('\n'_L1)) {
        if (!line.startsWith("| `"_L1))
            continue;
        for (auto all = word.globalMatch(line.section('|'_L1, 1, 1)); all.hasNext();)
            words << all.next().captured(1);
    }
    return words;
}

/// Latin in any language, and why.
bool isName(const QString& text) {
    static const QRegularExpression names(
        u"^(COM\\d.*|.*Sorvanto.*|.*\\.(mdb|xml|log|md|txt|csv)|[A-Z]{2,4} ?\\d*|PDF|frm\\w+:\\w+|tour|[\\d.,: ]+(AM|PM)?)$"_s);
    return names.match(text).hasMatch();
}

class GlossaryTest : public LanguageTour {
protected:
    int language() const override { return 4; }
    void look(QWidget& shown, const QString& name) override {
        note(shown.windowTitle(), name);
        for (const QWidget* widget : shown.findChildren<QWidget*>()) {
            if (!widget->isVisible())
                continue;
            if (const auto* label = qobject_cast<const QLabel*>(widget))
                note(label->text(), name);
            else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
                note(button->text(), name);
            else if (const auto* group = qobject_cast<const QGroupBox*>(widget))
                note(group->title(), name);
            else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
                for (int i = 0; i < tabs->count(); ++i)
                    note(tabs->tabText(i), name);
            else if (const auto* header = qobject_cast<const QHeaderView*>(widget))
                noteColumns(*header, name);
        }
    }
    void noteColumns(const QHeaderView& header, const QString& where) {
        for (int i = 0; i < header.count(); ++i)
            if (!header.isSectionHidden(i))
                note(header.model()->headerData(i, header.orientation()).toString(), where);
    }
    void note(QString text, const QString& where) {
        text = text.remove('&'_L1).simplified();
        if (latin.match(text).hasMatch() && !russian.match(text).hasMatch())
            seen.insert(text, where);
    }

    QMap<QString, QString> seen;  ///< where each was seen
};

TEST_F(GlossaryTest, TellsEachWordThatStaysEnglish) {
    ASSERT_NO_FATAL_FAILURE(tour());
    const QStringList told = glossary();
    EXPECT_GT(told.size(), 12);
    QString records;
    for (const char* table : {"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs"})
        for (const QStringList& column : sql(u"SELECT name FROM pragma_table_info('%1')"_s.arg(table)))
            records += sqlText(u"SELECT group_concat([%1], char(10)) FROM [%2]"_s.arg(column.first(), table));
    for (auto text = seen.begin(); text != seen.end(); ++text) {
        const bool isTold = std::any_of(told.begin(), told.end(), [&](const QString& word) {
            return text.key() == word || text.key().startsWith(word + ' '_L1);
        });
        const QString asked = text.key().section(u" ("_s, 0, 0);  // a chemical and its unit
        if (!isTold && !isName(text.key()) && !records.contains(asked))
            ADD_FAILURE() << str(text.value() + ": \""_L1 + text.key() + "\" is not in the glossary"_L1);
    }
}

}  // namespace
}  // namespace languages
