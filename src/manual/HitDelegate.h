// A place that was found: its heading, and below it the text around the words in two lines.
#pragma once

#include <QStyledItemDelegate>

namespace sorvanto {

class HitDelegate : public QStyledItemDelegate {
public:
    /// Role of the text below; the heading is the item's own text.
    static constexpr int contextRole = Qt::UserRole;

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace sorvanto
