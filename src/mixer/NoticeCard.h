// A sentence that the user has to see: a soft card with a colored edge and a mark for its kind.
#pragma once

#include <QFrame>
#include <QString>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace sorvanto {

class NoticeCard : public QFrame {
    Q_OBJECT

public:
    enum class Kind { Information, Warning, Problem };

    explicit NoticeCard(QWidget* parent = nullptr);
    /// An empty text hides the card.
    void show(Kind kind, const QString& text);
    QString text() const;
    /// A button below the sentence, for what it asks to be done.
    QPushButton* addButton(const char* name);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind m_kind = Kind::Information;
    QLabel* m_label;
    QVBoxLayout* m_layout;
};

}  // namespace sorvanto
