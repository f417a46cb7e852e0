// Entry boxes: text, number, date, choice, up-down. All know "locked": shown as a quiet surface,
// not changeable, still selectable.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/widgets/DateInput.h"

#include <QComboBox>
#include <QDateTime>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QString>
#include <QVariant>
#include <QWidget>

class QLabel;
class QToolButton;

namespace platform {

/// Anything that can be locked by the walk over a form's controls.
class Lockable {
public:
    virtual ~Lockable() = default;
    virtual void setReadOnlyBox(bool on) = 0;
    virtual bool isReadOnlyBox() const = 0;
};

/// One line of text; line breaks in what is pasted become blanks. Out of use it shows the beginning of a text
/// that is longer than the box, with "…" and the whole as a tip.
class TextBox : public QLineEdit, public Lockable {
    Q_OBJECT
public:
    explicit TextBox(QWidget* parent = nullptr);
    /// A text set by the program is shown whole, however long it is.
    void setText(const QString& text);
    /// Takes no more characters from the user than the column holds (0: any number), nor than a longer text has
    /// that the program has set. What does not fit is refused whole, with a hint; a count shows near the end.
    void setColumnSize(int characters);
    int columnSize() const { return m_columnSize; }
    /// The count near the end, "38 / 40"; empty before.
    QString countText() const;
    void setReadOnlyBox(bool on) override;
    bool isReadOnlyBox() const override { return isReadOnly(); }

protected:
    /// A box that can't be edited selects nothing when it is reached: the mark would promise that typing
    /// replaces the text.
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    int most() const { return qMax(m_columnSize, m_longestSet); }
    void makeRoomForCount();
    void tellFull();

    int m_columnSize = 0, m_longestSet = 0;
};

/// Several lines of text; Tab moves on.
class MemoBox : public QPlainTextEdit, public Lockable {
    Q_OBJECT
public:
    explicit MemoBox(QWidget* parent = nullptr);
    QString text() const { return toPlainText(); }
    /// A text with a word longer than any language has is broken anywhere: looking for the blanks of a word of
    /// 200,000 characters at each line takes most of a minute.
    void setText(const QString& text);
    void setReadOnlyBox(bool on) override;
    bool isReadOnlyBox() const override { return isReadOnly(); }

protected:
    /// An empty clipboard holds data without any format; Qt 6.4 asks for the first one and ends there.
    void insertFromMimeData(const QMimeData* source) override;

private:
    void breakLongWords(const QString& text);
};

/// A number. Shows the display format when not focused; while it is edited the number alone, with the
/// decimals of the edit format and without currency and thousands marks. An edit format with decimals
/// lets four of them be typed, as many as an amount of money holds. Takes the user's decimal separator
/// and, where it can't be meant otherwise, the point; refuses ambiguous input ("1.234,5" and "1,250" in
/// English) and values outside its bounds with a hint and a red frame; never guesses, never clips. A value
/// that is 10, 100 or 1000 times the one set by the program, or such a part of it, is taken and shown in
/// amber with both. Values set by the program are shown as they are, whatever
/// the bounds. While what is typed can't be taken, text() is empty and the value can't be read.
class NumberBox : public QLineEdit, public Lockable {
    Q_OBJECT
public:
    explicit NumberBox(QWidget* parent = nullptr);

    /// The number as text with a point, e.g. "12.5"; the empty text when the box is empty.
    QString text() const;
    void setText(const QString& text);
    void clear() { setText({}); }
    /// Empty box: NULL. Throws typeMismatch, with the hint as its text, while the box is not acceptable.
    QVariant value() const;
    void setValue(double value);
    void setValue(Currency value);
    /// An empty box counts as 0. Throws as value().
    double toDouble() const;
    Currency toCurrency() const;

    void setFormats(const QString& editFormat, const QString& displayFormat);
    void setBounds(double minimum, double maximum);
    double minimum() const { return m_minimum; }
    double maximum() const { return m_maximum; }
    /// Whether what is typed is a number inside the bounds. When it is not, the box takes the focus and
    /// says why.
    bool acceptable();
    /// Why what is typed can't be taken; empty when it can.
    QString problem() const { return m_problem; }

    void setReadOnlyBox(bool on) override;
    bool isReadOnlyBox() const override { return isReadOnly(); }

signals:
    void valueEdited();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void showNumber(bool editing);
    void setNumber(const QString& number);
    void takeTyped();
    void takeForeignText();
    void tellState(bool tellNow);
    QString ambiguity(const QStringList& readings) const;
    QString editText() const;
    QString displayText() const;
    QString problemOf(const QString& number, int decimals) const;
    void requireAcceptable() const;

    QString m_editFormat, m_displayFormat;
    QString m_number;  // with a point; empty for none
    QString m_stored;  // what the program has set
    QString m_problem;
    double m_minimum, m_maximum;
    bool m_typed = false, m_showing = false;
};

/// A date: typing in the system's order or as year, month, day, or the calendar. The zero date shows as an empty box.
class DateBox : public QWidget, public Lockable {
    Q_OBJECT
public:
    explicit DateBox(QWidget* parent = nullptr);
    /// The zero date when the box is empty.
    QDateTime value() const { return m_value; }
    void setValue(const QDateTime& value);
    /// What the box shows.
    QString text() const;
    /// A date as text; the empty text is the zero date. Throws typeMismatch on anything else.
    void setText(const QString& text);
    void clear();
    /// Whether what is typed is a date or nothing. When it is not, the box takes the focus and says why,
    /// and value() stays at the last good date.
    bool acceptable();
    /// Shows the time of day as well (a log's date).
    void setWithTime(bool on);
    /// Takes no date after today; years of two digits lie in the past.
    void setBirthDate(bool on);
    void setReadOnlyBox(bool on) override;
    bool isReadOnlyBox() const override;

signals:
    void valueEdited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void takeTyped();
    void leave();
    void showValue();
    void openCalendar();
    void choose(const QDate& day);

    QDateTime m_value;
    QString m_problem;
    bool m_withTime = false;
    DateRange m_range = DateRange::Any;
    QLineEdit* m_edit;
    QToolButton* m_button;
};

/// A drop-down list that can show a text outside its list. The wheel does not change it.
class ChoiceBox : public QComboBox, public Lockable {
    Q_OBJECT
    Q_PROPERTY(bool locked READ isReadOnlyBox)
public:
    explicit ChoiceBox(QWidget* parent = nullptr);
    /// -1 when a text outside the list, or nothing, is shown.
    int listIndex() const;
    /// Chooses a row and always raises clicked, also when unchanged. -1 or a row that the list lacks
    /// chooses none and shows nothing.
    void setListIndex(int index);
    /// The text shown; setting it never raises clicked. A text of the list is chosen, any other is shown
    /// with listIndex -1.
    QString boxText() const;
    void setBoxText(const QString& text);
    void setReadOnlyBox(bool on) override;
    bool isReadOnlyBox() const override { return m_locked; }
    void showPopup() override;

signals:
    /// The user or the program chose a row.
    void clicked();

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void chooseByUser();
    /// The text as far as it has room, "…" at the end of one that is cut.
    QString shownText() const;

    bool m_locked = false;
    QString m_foreignText;
};

/// Two small arrows beside a label: a whole number within bounds. The label is filled by the buddy
/// rule (the value as it stands) or by a listener of changed.
class UpDown : public QWidget {
    Q_OBJECT
public:
    explicit UpDown(QWidget* parent = nullptr);
    int value() const { return m_value; }
    /// Kept within the bounds; raises changed when it differs.
    void setValue(int value);
    int minimum() const { return m_minimum; }
    int maximum() const { return m_maximum; }
    int step() const { return m_step; }
    /// Changes the bounds alone; the value stays, even outside. The first step down lands on the maximum
    /// or below.
    void setBounds(int minimum, int maximum);
    void setMaximum(int maximum) { setBounds(m_minimum, maximum); }
    void setStep(int step) { m_step = step; }
    /// The label that shows the value as it stands, from the next change on.
    void setBuddy(QLabel* label);

public slots:
    void stepUp();
    void stepDown();

signals:
    void changed(int value);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QToolButton* makeArrow(const QString& picture, const QString& name);
    void stepBy(int steps);
    void change(int value);

    int m_value = 0, m_minimum = 0, m_maximum = 100, m_step = 1;
    QLabel* m_buddy = nullptr;
};

}  // namespace platform
