#include "platform/widgets/ListCard.h"

#include "platform/widgets/FocusMark.h"
#include "platform/widgets/Rows.h"
#include "platform/widgets/Theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

namespace platform {

ListCard::ListCard(const QString& name, int fewestRows, QWidget* parent)
    : QFrame(parent), m_title(new QLabel(this)), m_remark(new QLabel(this)), m_view(new QTableView(this)) {
    makeCard(*this);
    m_title->setTextFormat(Qt::PlainText);
    setLook(*m_title, "heading");
    m_remark->setTextFormat(Qt::PlainText);
    setLook(*m_remark, "quiet");
    setUpRows(*m_view);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setObjectName(name);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setAlternatingRowColors(true);
    m_view->setMinimumHeight(headPitch + fewestRows * rowPitch);
    new FocusMark(*m_view);
    m_view->installEventFilter(this);

    auto* head = new QHBoxLayout;
    head->addWidget(m_title);
    head->addStretch();
    head->addWidget(m_remark);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2 * grid, grid, 2 * grid, grid);
    column->setSpacing(grid / 2);
    column->addLayout(head);
    column->addWidget(m_view, 1);
}

void ListCard::setModel(QAbstractItemModel& model) {
    m_view->setModel(&model);
    // The frame is the row's, and the view paints the cell alone.
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, m_view->viewport(),
            qOverload<>(&QWidget::update));
}

void ListCard::setTitle(const QString& title, const QString& remark) {
    m_title->setText(title);
    setRemark(remark);
    m_view->setAccessibleName(title);
}

void ListCard::setRemark(const QString& remark) { m_remark->setText(remark); }

bool ListCard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == m_view)  // once its rows have their place
        QMetaObject::invokeMethod(
            this, [this] { layOutColumns(); }, Qt::QueuedConnection);
    return QFrame::eventFilter(watched, event);
}

void ListCard::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layOutColumns();
}

}  // namespace platform
