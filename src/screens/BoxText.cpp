#include "screens/BoxText.h"

#include "platform/basic/LocalMarks.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/ReportList.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString numberText(const platform::NumberBox& box) {
    return box.problem().isEmpty() ? platform::withLocalMarks(box.text(), box.locale())
                                   : box.QLineEdit::text();
}

QString listText(const platform::ReportList& list) {
    QStringList lines;
    for (int row = 0; row < list.count(); ++row)
        lines << list.row(row).join('\t'_L1);
    return lines.join('\n'_L1);
}

void fillList(platform::ReportList& list, const QString& text) {
    list.clear();
    for (const QString& line : text.split('\n'_L1, Qt::SkipEmptyParts))
        list.addRow(line.split('\t'_L1));
}

/// A text that was kept from a time of wider columns comes back whole all the same.
void typeOver(QLineEdit& line, const QString& text) {
    if (auto* box = qobject_cast<platform::TextBox*>(&line); box && text.size() > box->columnSize())
        box->setText(text);
    line.selectAll();
    line.insert(text);
}

void choose(platform::ChoiceBox& box, const QString& text) {
    if (const int row = box.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive); row >= 0)
        box.setListIndex(row);
    else
        box.setBoxText(text);
}

}  // namespace

QString boxText(const QWidget& box) {
    if (const auto* number = qobject_cast<const platform::NumberBox*>(&box))
        return numberText(*number);
    if (const auto* line = qobject_cast<const QLineEdit*>(&box))
        return line->text();
    if (const auto* memo = qobject_cast<const platform::MemoBox*>(&box))
        return memo->text();
    if (const auto* date = qobject_cast<const platform::DateBox*>(&box))
        return date->text();
    if (const auto* choice = qobject_cast<const platform::ChoiceBox*>(&box))
        return choice->boxText();
    if (const auto* list = qobject_cast<const platform::ReportList*>(&box))
        return listText(*list);
    const auto* label = qobject_cast<const QLabel*>(&box);
    return label ? label->text() : QString();
}

void typeIntoBox(QWidget& box, const QString& text) {
    if (auto* line = qobject_cast<QLineEdit*>(&box))
        typeOver(*line, text);
    else if (auto* memo = qobject_cast<platform::MemoBox*>(&box))
        memo->setText(text);
    else if (auto* date = qobject_cast<platform::DateBox*>(&box))
        typeOver(*date->findChild<QLineEdit*>(), text);
    else if (auto* choice = qobject_cast<platform::ChoiceBox*>(&box))
        choose(*choice, text);
    else if (auto* list = qobject_cast<platform::ReportList*>(&box))
        fillList(*list, text);
    else if (auto* label = qobject_cast<QLabel*>(&box))
        label->setText(text);
}

}  // namespace sorvanto
