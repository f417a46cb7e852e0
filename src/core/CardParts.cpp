#include "core/CardParts.h"

#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace sorvanto {

QHBoxLayout* layOutCard(QFrame& card, const CardParts& parts) {
    parts.text->setTextFormat(Qt::PlainText);
    parts.text->setWordWrap(true);
    parts.close->setIcon(platform::icon(u"close"_s));
    parts.close->setAutoRaise(true);
    parts.close->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout(&card);
    row->setContentsMargins(2 * platform::grid, platform::grid / 2, platform::grid, platform::grid / 2);
    row->setSpacing(platform::grid);
    row->addWidget(parts.sign);
    row->addWidget(parts.text, 1);
    row->addWidget(parts.close);
    platform::makeBar(card, Qt::BottomEdge);
    card.hide();
    return row;
}

void nameClose(QToolButton& close) {
    close.setToolTip(translated(u"Close"_s));
    close.setAccessibleName(close.toolTip());
}

}  // namespace sorvanto
