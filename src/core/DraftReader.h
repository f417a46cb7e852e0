// A window beside the main one that shows a draft which can't be brought back: why, and each text with the
// value that it replaced, to be read and copied. It blocks nothing.
#pragma once

#include "shared/DraftedScreen.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;

namespace sorvanto {

class DraftReader : public QDialog {
    Q_OBJECT

public:
    explicit DraftReader(QWidget* parent);
    void showDraft(const Draft& draft, DraftFit fit);

private:
    void copyAll();

    QLabel* m_reason;
    QPlainTextEdit* m_text;
};

}  // namespace sorvanto
