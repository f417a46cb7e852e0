// The newest happening in the status line, for some seconds, with the buttons of what can be done about it; a click on
// it lists the last ones.
#pragma once

#include <QTimer>
#include <QWidget>
#include <chrono>

class QHBoxLayout;
class QPushButton;

namespace sorvanto {

class News;

class NewsLine : public QWidget {
    Q_OBJECT

public:
    /// How long a happening is shown: one to be read, and one with something to do.
    struct Times {
        std::chrono::milliseconds read = std::chrono::seconds(8), act = std::chrono::seconds(30);
    };

    explicit NewsLine(News& news, QWidget* parent = nullptr);
    void setTimes(Times times) { m_times = times; }

private:
    void show();
    void showActions();
    void fade();
    void openList();
    void alert();

    News& m_news;
    Times m_times;
    QTimer m_shown{this};
    QPushButton* m_text;
    QHBoxLayout* m_actions;
};

}  // namespace sorvanto
