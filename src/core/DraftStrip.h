// The strip above the screens that offers one draft: bring it back, or only read it, or discard it. Where
// there are several it says which of them, leads to the others, and discards all of them.
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;
class QToolButton;

namespace sorvanto {

class DraftStrip : public QFrame {
    Q_OBJECT

public:
    explicit DraftStrip(QWidget* parent = nullptr);
    /// readOnly: the first button reads instead of bringing back. number: from 1, the newest first.
    void offer(const QString& text, bool readOnly, int number, int count);

signals:
    void bringBack();
    void discard();
    void discardAll();
    /// To the next older one (1) or newer one (-1).
    void step(int direction);

private:
    QToolButton* addArrow(const char* name, const char* icon, int direction);

    QLabel* m_text;
    QWidget* m_others;
    QToolButton *m_newer, *m_older;
    QLabel* m_count;
    QPushButton *m_bringBack, *m_discard, *m_discardAll;
};

}  // namespace sorvanto
