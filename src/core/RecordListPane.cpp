#include "core/RecordListPane.h"

#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"
#include "platform/widgets/RecordList.h"
#include "shared/Context.h"
#include "shared/Translator.h"

#include <QLocale>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

/// About four milliseconds' worth.
constexpr int pieceRows = 1000;

}  // namespace

RecordListPane::RecordListPane(const Context& context, platform::RecordList& list)
    : m_context(context), m_list(list) {
    m_pieces.setInterval(0);
    connect(&m_pieces, &QTimer::timeout, this, &RecordListPane::readPiece);
    connect(&list, &platform::RecordList::chosen, this, &RecordListPane::choose);
    list.setCountText([this](int shown, int all) { return countText(shown, all); });
}

std::int64_t RecordListPane::stateOfRecords() const {
    return m_context.connection ? m_context.connection->changeState() : 0;
}

std::int64_t RecordListPane::ownState() const {
    return m_context.connection ? m_context.connection->engine().ownChangeState() : 0;
}

QString RecordListPane::countText(int shown, int all) const {
    if (!m_complete)
        return {};
    if (shown == all)
        return platform::counted(m_table.countText, all);
    return platform::counted(m_table.partText, all).replace(u"%2"_s, QLocale().toString(shown));
}

void RecordListPane::setScreen(ListedScreen* screen) {
    if (screen == m_screen)
        return;
    m_list.markDeletion(false);
    m_screen = screen;
    if (screen) {
        screen->deletionAsked = [pane = QPointer(this), screen](bool asked) {
            if (pane && pane->m_screen == screen)
                pane->m_list.markDeletion(asked);
        };
    }
    m_pieces.stop();
    m_complete = false;
    m_table = screen ? screen->listedTable() : ListedTable();
    std::vector<platform::ListColumn> columns;
    for (const ListedColumn& column : m_table.columns)
        columns.push_back(column.column);
    m_list.setColumns(std::move(columns), m_table.sortColumn, m_table.sortOrder);
    m_list.setTexts(m_table.filterText, m_table.name);
    if (m_table.dayColumn >= 0)
        m_list.setDayRange(m_table.dayColumn, translated(u"From day"_s), translated(u"To day"_s));
    follow();
}

void RecordListPane::setShown(bool shown) {
    m_shown = shown;
    follow();
}

void RecordListPane::setChoosable(bool choosable) { m_list.setEnabled(choosable); }

void RecordListPane::follow() {
    if (!m_screen || !m_shown)
        return;
    m_list.setCurrentKey(m_screen->shownKey());
    if (!m_pieces.isActive() && (!m_complete || ownState() != m_ownState))
        startReading();
}

void RecordListPane::followOthers() {
    const bool followed = m_screen && m_shown && m_complete && !m_pieces.isActive();
    if (followed && stateOfRecords() != m_state)
        startReading();
}

void RecordListPane::startReading() {
    const platform::ConnectionPtr& connection = m_context.connection;
    if (!connection || connection->state() == 0)
        return;
    QStringList expressions;
    for (const ListedColumn& column : m_table.columns)
        expressions << column.expression;
    m_state.reset();
    m_ownState = ownState();
    m_list.dropCollected();
    m_reader.emplace(connection, m_table.table, m_table.key, expressions);
    m_pieces.start();
}

// What can't be read is reported where the record itself is; the list then keeps what it has.
void RecordListPane::readPiece() {
    try {
        if (!m_state)
            m_state = stateOfRecords();
        const std::vector<platform::KeyedRow> rows = m_reader->next(pieceRows);
        m_list.collect(rows);
        if (rows.size() < pieceRows)
            finish();
    } catch (const platform::RuntimeError&) {
        m_pieces.stop();
        m_list.dropCollected();
        m_complete = true;
    }
}

void RecordListPane::finish() {
    m_pieces.stop();
    m_complete = true;
    m_list.showCollected();
    follow();
    followOthers();  // what was changed while it was read
}

void RecordListPane::choose(std::int64_t key) {
    if (!m_screen)
        return;
    m_screen->showRecord(static_cast<std::int16_t>(key));
    follow();
    emit chose();
}

}  // namespace sorvanto
