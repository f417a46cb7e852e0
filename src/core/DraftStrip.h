// The strip above the screens that offers one draft: bring it back, or only read it, or discard it.
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace sorvanto {

class DraftStrip : public QFrame {
    Q_OBJECT

public:
    explicit DraftStrip(QWidget* parent = nullptr);
    /// readOnly: the first button reads instead of bringing back.
    void offer(const QString& text, bool readOnly);

signals:
    void bringBack();
    void discard();

private:
    QLabel* m_text;
    QPushButton* m_bringBack;
    QPushButton* m_discard;
};

}  // namespace sorvanto
