// Typing in a list jumps to the next row whose first text column begins with what was typed. Backspace takes
// a letter back; a letter that fits no row begins anew. Esc, a click or an arrow ends the word.
#pragma once

#include "platform/data/Recordset.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <vector>

class QKeyEvent;

namespace sorvanto {

class ColumnTexts;

class ListTypeAhead : public QObject {
    Q_OBJECT
public:
    explicit ListTypeAhead(QObject* parent = nullptr);
    ~ListTypeAhead() override;

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
    /// Many rows of one table by statements of their own, since a list reads a row only when it is looked at.
    void startReading();
    void readAhead();
    /// Whatever has not been read yet.
    void readTexts();
    int search(const QString& folded, int from);
    void setWord(const QString& word);

    platform::RecordsetPtr m_rows;
    int m_column = -1;
    QString m_word;
    std::unique_ptr<ColumnTexts> m_reader;  ///< until all is read
    QTimer m_pieces;                        ///< reads while nobody types
    std::vector<QString> m_texts;           ///< folded texts of the column, there from the first key on
};

}  // namespace sorvanto
