// Incremental jump in a list.
#include "records/ListTypeAhead.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "records/ColumnTexts.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace sorvanto {

ListTypeAhead::ListTypeAhead(QObject* parent) : QObject(parent) {
    connect(&m_pieces, &QTimer::timeout, this, &ListTypeAhead::readAhead);
}

ListTypeAhead::~ListTypeAhead() = default;

void ListTypeAhead::setRows(const platform::RecordsetPtr& rows, int column) {
    m_rows = rows;
    m_column = column;
    m_texts.clear();
    clear();
    startReading();
}

void ListTypeAhead::startReading() {
    constexpr int fewRows = 200;
    m_reader.reset();
    m_pieces.stop();
    if (!m_rows || m_column < 0 || m_rows->recordCount() <= fewRows)
        return;
    const platform::FieldInfo& key = m_rows->fieldInfo(0);
    const platform::FieldInfo& column = m_rows->fieldInfo(m_column);
    if (key.baseTable.isEmpty() || column.baseTable != key.baseTable)
        return;
    m_reader = std::make_unique<ColumnTexts>(key.baseTable, key.baseColumn, column.baseColumn);
    m_pieces.start(0);
}

// What can't be read is told by the key that needs it.
void ListTypeAhead::readAhead() {
    try {
        if (!m_reader->readPiece())
            m_pieces.stop();
    } catch (const platform::RuntimeError&) {
        m_pieces.stop();
    }
}

void ListTypeAhead::clear() { setWord({}); }

bool ListTypeAhead::takeKey(const QKeyEvent& key, int currentRow) {
    if (!m_rows || m_column < 0)
        return false;
    const int from = std::max(currentRow, 0);
    if (key.key() == Qt::Key_Backspace && !m_word.isEmpty()) {
        const QString shorter = m_word.chopped(1);
        if (shorter.isEmpty())
            clear();
        else
            tryWord(shorter, 0);
        return true;
    }
    const QString text = key.text();
    const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (command || text.isEmpty() || !text.at(0).isPrint() || (m_word.isEmpty() && text == " "_L1))
        return false;
    // One letter again and again walks through the rows that begin with it.
    const int next = m_word.isEmpty() ? from : from + 1;
    if (!tryWord(m_word + text, from) && !tryWord(text, next))
        clear();
    return true;
}

bool ListTypeAhead::tryWord(const QString& word, int from) {
    const int row = search(word.toCaseFolded(), from);
    if (row < 0)
        return false;
    setWord(word);
    emit found(row);
    return true;
}

void ListTypeAhead::readTexts() {
    const std::int64_t count = m_rows->recordCount();
    m_texts.reserve(static_cast<std::size_t>(count));
    if (!m_reader) {
        for (std::int64_t row = 0; row < count; ++row)
            m_texts.push_back(platform::nullText(m_rows->valueAt(row, m_column)).toCaseFolded());
        return;
    }
    m_pieces.stop();
    while (m_reader->readPiece()) {
    }
    for (std::int64_t row = 0; row < count; ++row)
        m_texts.push_back(m_reader->texts().value(m_rows->valueAt(row, 0).toLongLong()).toCaseFolded());
    m_reader.reset();
}

int ListTypeAhead::search(const QString& folded, int from) {
    const auto count = static_cast<int>(m_rows->recordCount());
    if (m_texts.empty())
        readTexts();
    for (int step = 0; step < count; ++step) {
        const int row = (from + step) % count;
        if (m_texts[static_cast<std::size_t>(row)].startsWith(folded))
            return row;
    }
    return -1;
}

void ListTypeAhead::setWord(const QString& word) {
    if (m_word == word)
        return;
    m_word = word;
    emit wordChanged(word);
}

}  // namespace sorvanto
