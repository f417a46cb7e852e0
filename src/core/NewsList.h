// The last happenings, newest first, with their times and what can still be done about them. It goes with a click
// beside it, and with Esc.
#pragma once

#include "core/News.h"

#include <QFrame>

class QGridLayout;

namespace sorvanto {

class NewsList : public QFrame {
    Q_OBJECT

public:
    /// Above the widget; belongs to its window and deletes itself.
    static void open(News& news, QWidget& above);

private:
    NewsList(News& news, QWidget* parent);
    void fill();
    void addRow(int row, const News::Item& item);

    News& m_news;
    QGridLayout* m_rows;
};

}  // namespace sorvanto
