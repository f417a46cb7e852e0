// The strip above a record that another bench has changed or deleted: who, when, what the user's own save would mean, and
// what was changed.
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;
class QToolButton;

namespace sorvanto {

struct RecordChange;

class ChangeStrip : public QFrame {
    Q_OBJECT

public:
    explicit ChangeStrip(QWidget* parent = nullptr);
    /// editing: the record is being changed here too. nullptr hides it.
    void setChange(const RecordChange* change, bool editing);

signals:
    /// What was changed is wanted.
    void shown();
    void putAside();

private:
    QLabel* m_picture;
    QLabel* m_text;
    QPushButton* m_show;
    QToolButton* m_close;
};

}  // namespace sorvanto
