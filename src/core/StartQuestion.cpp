#include "core/StartQuestion.h"

#include "platform/ask/Ask.h"
#include "platform/widgets/Theme.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;

constexpr int textWidth = 480;
constexpr int questionSignSize = 36;

}  // namespace

StartQuestion::StartQuestion(const Content& content) {
    setObjectName(u"StartQuestion"_s);
    setWindowTitle(content.title);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->setSizeConstraint(QLayout::SetFixedSize);
    addHead(content, *column);
    addOffer(content, *column);
    if (!content.failure.isEmpty())
        column->addWidget(paragraph(content.failure, "caution"));
    addButtons(content, *column);
}

QString StartQuestion::ask(const Content& content) {
    StartQuestion question(content);
    platform::asker().showModal(question, [&] { question.exec(); });
    return question.chosen();
}

QLabel* StartQuestion::paragraph(const QString& text, const char* look) {
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    if (look)
        platform::setLook(*label, look);
    return label;
}

void StartQuestion::addHead(const Content& content, QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * grid);
    const auto& colors = platform::theme();
    auto* picture = new QLabel(this);
    const QIcon sign = content.warning ? platform::icon(u"warning"_s, colors.warning)
                                       : platform::icon(u"info"_s, colors.accent);
    picture->setPixmap(sign.pixmap(QSize(questionSignSize, questionSignSize), devicePixelRatioF()));
    row->addWidget(picture, 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(grid);
    auto* heading = paragraph(content.heading, "heading");
    heading->setObjectName(u"lblHeading"_s);
    texts->addWidget(heading);
    if (!content.file.isEmpty()) {
        auto* file = paragraph({}, "quiet");
        file->setText(file->fontMetrics().elidedText(content.file, Qt::ElideMiddle, textWidth));
        file->setToolTip(content.file);
        file->setObjectName(u"lblFile"_s);
        texts->addWidget(file);
    }
    for (const QString& text : content.texts)
        texts->addWidget(paragraph(text));
    if (!content.detail.isEmpty())
        texts->addWidget(paragraph(content.detail, "quiet"));
    row->addLayout(texts, 1);
    column.addLayout(row);
}

void StartQuestion::addOffer(const Content& content, QVBoxLayout& column) {
    if (content.offer.isEmpty())
        return;
    auto* card = new QFrame(this);
    card->setObjectName(u"fraOffer"_s);
    platform::makeCard(*card);
    auto* lines = new QVBoxLayout(card);
    lines->setContentsMargins(2 * grid, 2 * grid, 2 * grid, 2 * grid);
    lines->setSpacing(grid);
    for (const QString& text : content.offer)
        lines->addWidget(paragraph(text, lines->isEmpty() ? "heading" : nullptr));
    column.addWidget(card);
}

void StartQuestion::addButtons(const Content& content, QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    row->setSpacing(grid);
    row->addStretch();
    auto* none = new QPushButton(content.none, this);
    none->setObjectName(u"cmdNone"_s);
    none->setAutoDefault(false);
    connect(none, &QPushButton::clicked, this, &QDialog::reject);
    row->addWidget(none);
    for (auto choice = content.choices.rbegin(); choice != content.choices.rend(); ++choice) {
        const bool isMain = &*choice == &content.choices.front();
        auto* button = new QPushButton(choice->caption, this);
        button->setObjectName(choice->name);
        button->setAutoDefault(isMain);
        button->setDefault(isMain);
        if (isMain) {
            platform::setLook(*button, "primary");
            button->setFocus();
        }
        connect(button, &QPushButton::clicked, this, [this, name = choice->name] {
            m_chosen = name;
            accept();
        });
        row->addWidget(button);
    }
    column.addLayout(row);
}

}  // namespace sorvanto
