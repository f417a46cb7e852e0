#include "core/NewsButtons.h"

#include "platform/widgets/Theme.h"

#include <QBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

QPushButton* actionButton(NewsLook look, News& news, int id, std::size_t action, const QString& text,
                          const std::function<void()>& chosen) {
    auto* button = new QPushButton;
    button->setObjectName(u"cmdNewsAction%1"_s.arg(action));
    button->setText(QString(text).replace('&'_L1, "&&"_L1));
    button->setFocusPolicy(Qt::TabFocus);  // a click leaves the keys where they are
    if (look == NewsLook::Words)
        platform::setLook(*button, "inLine");
    QObject::connect(button, &QPushButton::clicked, &news, [&news, id, action, chosen] {
        if (chosen)
            chosen();
        news.act(id, action);
    });
    return button;
}

}  // namespace

// A button may be clicked just now, so it goes later.
void setNewsButtons(QBoxLayout& row, NewsLook look, News& news, const News::Item* item,
                    const std::function<void()>& chosen) {
    while (QLayoutItem* old = row.takeAt(0)) {
        old->widget()->hide();
        old->widget()->setObjectName(QString());
        old->widget()->deleteLater();
        delete old;
    }
    if (!item)
        return;
    for (std::size_t i = 0; i < item->happening.actions.size(); ++i)
        row.addWidget(actionButton(look, news, item->id, i, item->happening.actions[i].text, chosen));
}

}  // namespace sorvanto
