// A window of the start that says what is wrong and what can be done about it: one button for each way out.
// Closing it, or Esc, chooses none of them.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <vector>

class QLabel;
class QVBoxLayout;

namespace sorvanto {

class StartQuestion : public QDialog {
    Q_OBJECT

public:
    struct Choice {
        QString name;     ///< object name of the button
        QString caption;  ///< in the user's language
    };
    struct Content {
        QString title;
        QString heading;
        QString file;         ///< shown in the middle shortened where it is long; may be empty
        QStringList texts;    ///< paragraphs
        QString detail;       ///< a quiet line for a helper, in no language but the system's; may be empty
        QStringList offer;    ///< paragraphs of the card below; none: no card
        QString failure;      ///< why the way just tried failed; may be empty
        bool warning = true;  ///< with the sign of a warning
        std::vector<Choice> choices;  ///< the first is the main one
        QString none;                 ///< caption of the button that chooses nothing
    };

    explicit StartQuestion(const Content& content);
    /// Shows a window with that content to its end; the name of the button pressed, empty for none.
    static QString ask(const Content& content);
    QString chosen() const { return m_chosen; }

private:
    void addHead(const Content& content, QVBoxLayout& column);
    void addOffer(const Content& content, QVBoxLayout& column);
    void addButtons(const Content& content, QVBoxLayout& column);
    QLabel* paragraph(const QString& text, const char* look = nullptr);

    QString m_chosen;
};

}  // namespace sorvanto
