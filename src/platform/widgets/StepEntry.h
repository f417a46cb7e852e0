// Lets numbers be typed on an up-down, in the unit of its label. What is typed stands over the label until it is
// taken; it goes to the up-down with Enter, or when its field is left.
#pragma once

#include <QLineEdit>

class QLabel;

namespace platform {

class UpDown;

class StepEntry : public QLineEdit {
    Q_OBJECT
public:
    /// unit: what one of the up-down's value counts on the label. Belongs to the up-down's parent, on which the
    /// label stands too.
    StepEntry(UpDown& upDown, QLabel& label, int unit = 1);

    /// Takes what is typed, if anything. When that can't be set, the field takes the focus, says why and
    /// names the neighbours, and the value stays.
    bool acceptable();

protected:
    /// Digits on the up-down begin; switched off it drops what is typed.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void begin(const QString& digits);
    QString problem() const;
    bool take();
    void set(int number);
    void drop();
    void close();

    UpDown& m_upDown;
    QLabel& m_label;
    int m_unit;
    bool m_open = false;
};

}  // namespace platform
