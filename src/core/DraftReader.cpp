#include "core/DraftReader.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString reasonOf(const Draft& draft, DraftFit fit) {
    switch (fit) {
    case DraftFit::Deleted:
        return translated(u"The record has been deleted. The text can be read and copied."_s);
    case DraftFit::OtherDatabase:
        return translated(u"The text belongs to another database: %1"_s).arg(draft.database);
    case DraftFit::Changed:
        return translated(u"The record has changed since. The text can be read and copied."_s);
    case DraftFit::OnlyReadable:
        return translated(u"The text was typed into a list. It can be read and copied."_s);
    case DraftFit::Fits:
    case DraftFit::Failed:
        break;
    }
    return translated(u"The record cannot be opened. The text can be read and copied."_s);
}

QString textOf(const Draft& draft) {
    QString text = u"%1   %2\n"_s.arg(draft.title(), platform::dateText(draft.time));
    for (const DraftField& field : draft.fields) {
        text += u"\n%1\n%2\n"_s.arg(field.label.isEmpty() ? field.control : field.label, field.typed);
        if (!field.replaced.isEmpty())
            text += translated(u"Before: %1"_s).arg(field.replaced) + u"\n"_s;
    }
    return text;
}

}  // namespace

DraftReader::DraftReader(QWidget* parent)
    : QDialog(parent), m_reason(new QLabel(this)), m_text(new QPlainTextEdit(this)) {
    setObjectName(u"DraftReader"_s);
    setWindowTitle(translated(u"Unsaved text"_s));
    m_reason->setObjectName(u"lblReason"_s);
    m_reason->setTextFormat(Qt::PlainText);
    m_reason->setWordWrap(true);
    m_text->setObjectName(u"txtDraft"_s);
    m_text->setReadOnly(true);

    auto* buttons = new QDialogButtonBox(this);
    auto* copy = buttons->addButton(translated(u"Copy"_s), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"cmdCopyDraft"_s);
    auto* close = buttons->addButton(translated(u"Close"_s), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    connect(copy, &QPushButton::clicked, this, &DraftReader::copyAll);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2 * platform::grid, 2 * platform::grid, 2 * platform::grid,
                               2 * platform::grid);
    column->setSpacing(platform::grid);
    column->addWidget(m_reason);
    column->addWidget(m_text, 1);
    column->addWidget(buttons);
    resize(70 * platform::grid, 50 * platform::grid);
}

void DraftReader::showDraft(const Draft& draft, DraftFit fit) {
    m_reason->setText(reasonOf(draft, fit));
    m_text->setPlainText(textOf(draft));
    show();
    raise();
    activateWindow();
}

void DraftReader::copyAll() { QApplication::clipboard()->setText(m_text->toPlainText()); }

}  // namespace sorvanto
