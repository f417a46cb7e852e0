// Typing in a list jumps to the next row whose first text column begins with what was typed. Backspace takes
// a letter back; a letter that fits no row begins anew. Esc, a click or an arrow ends the word.
#pragma once

#include "platform/data/Recordset.h"

#include <QObject>
#include <QString>
#include <functional>
#include <vector>

class QKeyEvent;

namespace sorvanto {

class ListTypeAhead : public QObject {
    Q_OBJECT
public:
    explicit ListTypeAhead(QObject* parent = nullptr) : QObject(parent) {}

    /// The rows to search and the column to look at, -1 for none.
    void setRows(const platform::RecordsetPtr& rows, int column);
    /// Takes a key; false when it means nothing here.
    bool takeKey(const QKeyEvent& key, int currentRow);
    void clear();
    const QString& word() const { return m_word; }

signals:
    /// The row to jump to.
    void found(int row);
    void wordChanged(const QString& word);

private:
    bool tryWord(const QString& word, int from);
    /// Many rows of one table by one statement, since a list reads a row only when it is looked at.
    void readTexts();
    int search(const QString& folded, int from);
    void setWord(const QString& word);

    platform::RecordsetPtr m_rows;
    int m_column = -1;
    QString m_word;
    std::vector<QString> m_texts;  ///< folded texts of the column, read at the first key
};

}  // namespace sorvanto
