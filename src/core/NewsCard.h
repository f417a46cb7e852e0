// The newest happening that asks for an answer, as a card above the screens: it stays until it is answered,
// closed, or followed by another one.
#pragma once

#include <QFrame>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace sorvanto {

class News;

class NewsCard : public QFrame {
    Q_OBJECT

public:
    explicit NewsCard(News& news, QWidget* parent = nullptr);

private:
    void hear();
    void showActions();
    void dismiss();

    News& m_news;
    int m_item = 0;
    QLabel* m_text;
    QHBoxLayout* m_actions;
    QLabel* m_picture;
    QToolButton* m_close;
};

}  // namespace sorvanto
