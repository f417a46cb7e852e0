// The window of a message box or of a question for one line of text.
#pragma once

#include "platform/ask/Ask.h"

#include <QDialog>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace platform {

class AskDialog : public QDialog {
    Q_OBJECT
public:
    /// A message box.
    AskDialog(const QString& prompt, const BoxStyle& style, const QString& title, QWidget* parent);
    /// A line of text, with OK and Cancel.
    AskDialog(const QString& prompt, const QString& title, const QString& preset, const LineGuide& guide,
              QWidget* parent);

    Answer answer() const { return m_answer; }
    /// The line typed.
    QString line() const;
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void build(const QString& prompt, Icon icon, const QString& title);
    void addRemark(const QString& text);
    void addNote();
    void showNote();
    void correctLine();
    void addButton(const QString& caption, Answer answer, bool isDefault);

    Answer m_answer = Answer::Cancel;
    bool m_escapable = true;
    bool m_low = false;
    QString m_prompt;
    QString m_accessKeys;  ///< the letters taken
    QLineEdit* m_line = nullptr;
    QLabel* m_note = nullptr;
    LineGuide m_guide;
    QHBoxLayout* m_buttons = nullptr;
    QVBoxLayout* m_column = nullptr;
    QVBoxLayout* m_text = nullptr;
};

}  // namespace platform
