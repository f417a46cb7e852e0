#include "core/HistoryWindow.h"

#include "core/HistoryFileWindow.h"
#include "core/TraceList.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Plurals.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Caption.h"
#include "platform/widgets/Theme.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;

constexpr int dateBoxWidth = 120, momentBoxWidth = 200;
constexpr int momentWidth = 184, personWidth = 150, deedWidth = 150, fieldWidth = 230;

/// The last moment of that day, as the computer's clock has it now.
QDateTime endOf(const QDate& day) { return QDateTime(day, QTime(23, 59, 59, 999)); }

/// Emptied by hand it holds the zero date.
bool hasDay(const platform::DateBox& box) { return !box.text().isEmpty(); }

QString dayText(const QDateTime& moment) {
    return platform::dateText(QDateTime(moment.date(), QTime(), Qt::UTC));
}

/// The history may be younger than the record: it was perhaps changed before.
QString noHistoryText(const QDateTime& begin) {
    if (!begin.isValid())
        return translated(u"Nothing is written down of this record."_s);
    return translated(u"Nothing is written down of this record since the history began on %1."_s)
        .replace(u"%1"_s, dayText(begin));
}

}  // namespace

HistoryWindow::HistoryWindow(Context& context, const platform::ConnectionPtr& connection, Record record,
                             QWidget* parent)
    : QDialog(parent), m_context(context), m_connection(connection), m_record(std::move(record)),
      m_entries(historyOf(connection->engine(), m_record.table, m_record.key)), m_person(new QComboBox(this)),
      m_field(new QComboBox(this)), m_since(new platform::DateBox(this)), m_day(new platform::DateBox(this)),
      m_changes(new TraceList(u"grdChanges"_s, this)), m_past(new TraceList(u"grdPast"_s, this)),
      m_message(new QLabel(this)), m_use(new QPushButton(translated(u"Use these values"_s), this)) {
    setObjectName(u"HistoryWindow"_s);
    setWindowTitle(translated(u"History of %1"_s).replace(u"%1"_s, m_record.name));
    readLines();
    fillChoices();
    buildWindow();
    if (m_record.since.isValid()) {
        m_since->setWithTime(true);
        m_since->setValue(m_record.since);
    }
    connect(m_person, &QComboBox::currentIndexChanged, this, &HistoryWindow::showChanges);
    connect(m_field, &QComboBox::currentIndexChanged, this, &HistoryWindow::showChanges);
    connect(m_since, &platform::DateBox::valueEdited, this, &HistoryWindow::showChanges);
    connect(m_day, &platform::DateBox::valueEdited, this, &HistoryWindow::showPast);
    showChanges();
    showPast();
}

void HistoryWindow::buildWindow() {
    m_person->setObjectName(u"cboPerson"_s);
    m_field->setObjectName(u"cboField"_s);
    m_since->setObjectName(u"txtSince"_s);
    m_day->setObjectName(u"txtDay"_s);
    m_message->setObjectName(u"lblNoHistory"_s);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setText(noHistoryText(historyBegin(m_connection->engine())));
    m_use->setObjectName(u"cmdUseValues"_s);
    m_use->setAutoDefault(false);
    m_use->setToolTip(
        translated(u"Fills the boxes of the record as it is today; nothing is saved until you save it."_s));
    m_use->hide();
    QObject::connect(m_use, &QPushButton::clicked, this, &HistoryWindow::useValues);
    auto* close = new QPushButton(translated(u"Close"_s), this);
    close->setObjectName(u"cmdClose"_s);
    close->setAutoDefault(false);
    QObject::connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* all = new QPushButton(translated(u"All records"_s), this);
    all->setObjectName(u"cmdAllRecords"_s);
    all->setAutoDefault(false);
    QObject::connect(all, &QPushButton::clicked, this, &HistoryWindow::showAll);
    setTabOrder(all, m_use);
    setTabOrder(m_use, close);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(all);
    bottom->addStretch();
    bottom->addWidget(m_use);
    bottom->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addLayout(topRow());
    column->addWidget(m_message);
    column->addWidget(m_changes, 3);
    column->addWidget(m_past, 2);
    column->addLayout(bottom);
    platform::giveAccessKeys(*this);
    const QSize room = screen() ? screen()->availableSize() : QSize(130 * grid, 100 * grid);
    resize(std::min(145 * grid, room.width() - 4 * grid), std::min(100 * grid, room.height() - 8 * grid));
}

QLayout* HistoryWindow::topRow() {
    auto* top = new QHBoxLayout;
    top->setSpacing(grid);
    for (QWidget* control : {static_cast<QWidget*>(m_person), static_cast<QWidget*>(m_field)}) {
        control->setMinimumWidth(21 * grid);
        top->addWidget(control);
    }
    m_since->setMinimumWidth(m_record.since.isValid() ? momentBoxWidth : dateBoxWidth);
    m_day->setMinimumWidth(dateBoxWidth);
    top->addSpacing(grid);
    top->addWidget(platform::captionFor(*m_since, translated(u"Changed since"_s)));
    top->addWidget(m_since);
    top->addSpacing(grid);
    top->addWidget(platform::captionFor(*m_day, translated(u"As it was on"_s)));
    top->addWidget(m_day);
    top->addStretch();
    return top;
}

void HistoryWindow::readLines() {
    for (const HistoryEntry& entry : m_entries) {
        m_lines.emplace_back();
        for (const HistoryField& field : entry.fields) {
            HistoryLine line = historyLine(m_context, m_connection->engine(), entry, field);
            if (!line.caption.isEmpty())
                m_lines.back().push_back(std::move(line));
        }
    }
}

void HistoryWindow::fillChoices() {
    QStringList persons;
    QStringList fields;
    for (const HistoryEntry& entry : m_entries)
        persons << historyPerson(entry.person);
    for (const std::vector<HistoryLine>& lines : m_lines) {
        for (const HistoryLine& line : lines)
            fields << line.caption;
    }
    for (auto [box, all, texts] : {std::tuple{m_person, translated(u"All persons"_s), &persons},
                                   std::tuple{m_field, translated(u"All fields"_s), &fields}}) {
        texts->removeDuplicates();
        texts->removeAll(QString());
        texts->sort(Qt::CaseInsensitive);
        box->addItem(all);
        box->addItems(*texts);
        box->setAccessibleName(all);
    }
}

bool HistoryWindow::isWanted(const HistoryEntry& entry) const {
    if (m_person->currentIndex() > 0 && historyPerson(entry.person) != m_person->currentText())
        return false;
    return !hasDay(*m_since) || historyClock(entry) >= m_since->value();
}

/// One row a field; who and when stand in the first of them, or alone where only fields changed that no screen shows.
std::vector<QStringList> HistoryWindow::rowsOf(std::size_t number) const {
    const HistoryEntry& entry = m_entries[number];
    QStringList head{platform::dateText(historyClock(entry)), historyPerson(entry.person),
                     historyDeed(entry)};
    const bool allFields = m_field->currentIndex() <= 0;
    std::vector<QStringList> rows;
    for (const HistoryLine& line : m_lines[number]) {
        if (!allFields && line.caption != m_field->currentText())
            continue;
        const bool ofLine = entry.table != m_record.table;
        rows.push_back(head + QStringList{ofLine ? entry.name + u" · "_s + line.caption : line.caption,
                                          line.before, line.after});
        head = {QString(), QString(), QString()};
    }
    if (rows.empty() && allFields)
        rows.push_back(head);
    return rows;
}

void HistoryWindow::showChanges() {
    guarded(u"HistoryWindow:showChanges"_s, [&] {
        std::vector<QStringList> rows;
        std::int64_t changes = 0;
        for (std::size_t number = 0; number < m_entries.size(); ++number) {
            if (!isWanted(m_entries[number]))
                continue;
            const std::vector<QStringList> own = rowsOf(number);
            changes += own.empty() ? 0 : 1;
            rows.insert(rows.end(), own.begin(), own.end());
        }
        m_message->setVisible(m_entries.empty());
        m_changes->setTitle(platform::counted(translated(u"%1 change | %1 changes"_s), changes));
        m_changes->setColumns({{translated(u"Date"_s), momentWidth},
                               {translated(u"Who"_s), personWidth},
                               {QString(), deedWidth},
                               {translated(u"Field"_s), fieldWidth},
                               {translated(u"Before"_s)},
                               {translated(u"After"_s)}});
        m_changes->setRows(std::move(rows));
    });
}

QMap<QString, HistoryWindow::Shown> HistoryWindow::shownAt(const QDateTime& moment) const {
    constexpr int digits = 6;
    QMap<QString, Shown> shown;
    for (const PastRow& row :
         recordAsOf(m_connection->engine(), m_record.table, m_record.key, m_entries, moment)) {
        const bool isLine = row.table != m_record.table;
        const QString place = u"%1 %2 "_s.arg(isLine ? 1 : 0).arg(row.key, digits, 10, '0'_L1);
        for (auto field = row.values.begin(); field != row.values.end(); ++field) {
            if (const QString name = historyCaption(field.key()); !name.isEmpty())
                shown[place + field.key()] = {isLine ? row.name + u" · "_s + name : name,
                                              historyValue(m_context, field.key(), field.value())};
        }
    }
    return shown;
}

namespace {

QDateTime always() { return QDateTime(QDate(9999, 12, 31), QTime()); }

/// "Urea · Qty: 1.5, now 2"
QString differenceText(const QString& field, const QString& then, const QString& now) {
    const auto orNothing = [](const QString& value) { return value.isEmpty() ? u"–"_s : value; };
    return translated(u"%1: %2, now %3"_s)
        .replace(u"%3"_s, orNothing(now))
        .replace(u"%2"_s, orNothing(then))
        .replace(u"%1"_s, field);
}

}  // namespace

/// Of the record itself what can be typed; of its lines what differs, in words.
void HistoryWindow::offerValues(const ShownFields& then, const ShownFields& now) {
    m_offered = {m_record.key, m_day->text(), {}, {}, {}};
    const auto rowAt = [&](const QDateTime& moment) {
        const auto rows = recordAsOf(m_connection->engine(), m_record.table, m_record.key, m_entries, moment);
        return rows.empty() ? QMap<QString, QVariant>() : rows.front().values;
    };
    m_offered.then = rowAt(endOf(m_day->value().date()));
    const QMap<QString, QVariant> today = rowAt(always());
    for (auto field = m_offered.then.begin(); field != m_offered.then.end(); ++field) {
        if (today.value(field.key()) != field.value())
            m_offered.changed << field.key();
    }
    ShownFields lines = now;
    lines.insert(then);
    for (auto field = lines.begin(); field != lines.end(); ++field) {
        const QString before = then.value(field.key()).value;
        const QString after = now.value(field.key()).value;
        if (field.key().startsWith("1 "_L1) && before != after)
            m_offered.lines << differenceText(field->field, before, after);
    }
    m_use->setVisible(m_record.onShow && !m_offered.then.isEmpty() && !today.isEmpty());
}

void HistoryWindow::showAll() {
    guarded(u"HistoryWindow:showAll"_s, [&] {
        HistoryFileWindow window(m_context, m_connection, this);
        platform::asker().showModal(window, [&] { window.exec(); });
    });
}

void HistoryWindow::useValues() {
    m_wanted = m_offered;
    accept();
}

/// Why it can't be told what the record was at that moment; empty where it can.
QString HistoryWindow::whyUnknown(const QDateTime& moment) const {
    const QDateTime begin = historyBegin(m_connection->engine());
    if (begin.isValid() && moment < begin)
        return translated(u"The history begins on %1: what was before is not known."_s)
            .replace(u"%1"_s, dayText(begin));
    if (isErasedSince(m_record.table, m_record.key, m_entries, moment))
        return translated(u"Values of this record were erased on request: what it was then is not known."_s);
    return {};
}

void HistoryWindow::showPast() {
    guarded(u"HistoryWindow:showPast"_s, [&] {
        m_past->setVisible(hasDay(*m_day));
        m_use->setVisible(false);
        if (!hasDay(*m_day))
            return;
        const QDateTime moment = endOf(m_day->value().date());
        const QString unknown = whyUnknown(moment);
        m_past->setTitle(translated(u"As it was on %1"_s).replace(u"%1"_s, m_day->text()), unknown);
        m_past->setColumns(
            {{translated(u"Field"_s), fieldWidth}, {translated(u"Then"_s)}, {translated(u"Now"_s)}});
        if (unknown.isEmpty())
            fillPast(moment);
        else
            m_past->setRows({});
    });
}

// What is another one now stands first.
void HistoryWindow::fillPast(const QDateTime& moment) {
    const QMap<QString, Shown> then = shownAt(moment);
    QMap<QString, Shown> now = shownAt(always());
    offerValues(then, now);
    std::vector<QStringList> rows;
    for (auto field = then.begin(); field != then.end(); ++field)
        rows.push_back({field->field, field->value, now.take(field.key()).value});
    for (auto field = now.begin(); field != now.end() && !then.isEmpty(); ++field)
        rows.push_back({field->field, QString(), field->value});
    std::stable_partition(rows.begin(), rows.end(),
                          [](const QStringList& row) { return row.at(1) != row.at(2); });
    if (then.isEmpty())
        m_past->setRemark(translated(u"The record was not there then."_s));
    m_past->setRows(std::move(rows));
}

}  // namespace sorvanto
