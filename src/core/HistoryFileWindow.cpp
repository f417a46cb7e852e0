#include "core/HistoryFileWindow.h"

#include "core/TraceList.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Plurals.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Caption.h"
#include "platform/widgets/Theme.h"
#include "reports/HistoryCaptions.h"
#include "reports/ReportFlow.h"
#include "reports/rptHistory.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QDeadlineTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;

constexpr int daysAtFirst = 30;
constexpr int mostLines = 5000;  // paper and spreadsheet have all
constexpr int pieceMilliseconds = 15;
constexpr std::size_t leastRows = 50;  // the first picture is full
// Of the columns from the left.
constexpr int widths[] = {184, 150, 130, 210, 140};

/// Emptied by hand it is no bound.
QDate dayIn(const platform::DateBox& box) { return box.text().isEmpty() ? QDate() : box.value().date(); }

QDateTime startOf(const QDate& day) { return QDateTime(day, QTime(0, 0), Qt::UTC); }

}  // namespace

HistoryFileWindow::HistoryFileWindow(Context& context, const platform::ConnectionPtr& connection,
                                     QWidget* parent)
    : QDialog(parent), m_context(context), m_connection(connection), m_from(new platform::DateBox(this)),
      m_to(new platform::DateBox(this)), m_changes(new TraceList(u"grdChanges"_s, this)),
      m_print(new QPushButton(translated(u"Print"_s), this)),
      m_export(new QPushButton(translated(u"Export"_s), this)) {
    setObjectName(u"HistoryFileWindow"_s);
    setWindowTitle(translated(u"Change History"_s));
    m_from->setValue(startOf(platform::today().date().addDays(-daysAtFirst)));
    m_to->setValue(startOf(platform::today().date()));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addLayout(topRow());
    column->addWidget(m_changes, 1);
    column->addLayout(bottomRow());
    platform::giveAccessKeys(*this);
    const QSize room = screen() ? screen()->availableSize() : QSize(130 * grid, 100 * grid);
    resize(std::min(150 * grid, room.width() - 4 * grid), std::min(100 * grid, room.height() - 8 * grid));
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, &HistoryFileWindow::readPiece);
    showChanges();
}

QLayout* HistoryFileWindow::topRow() {
    auto* top = new QHBoxLayout;
    top->setSpacing(grid);
    m_from->setObjectName(u"txtFrom"_s);
    m_to->setObjectName(u"txtTo"_s);
    for (const auto& [box, text] :
         {std::pair(m_from, translated(u"From"_s)), std::pair(m_to, translated(u"To"_s))}) {
        top->addWidget(platform::captionFor(*box, text));
        top->addWidget(box);
        top->addSpacing(grid);
        connect(box, &platform::DateBox::valueEdited, this, &HistoryFileWindow::showChanges);
    }
    top->addStretch();
    return top;
}

QLayout* HistoryFileWindow::bottomRow() {
    m_print->setObjectName(u"cmdPrint"_s);
    m_export->setObjectName(u"cmdExport"_s);
    auto* close = new QPushButton(translated(u"Close"_s), this);
    close->setObjectName(u"cmdClose"_s);
    connect(m_print, &QPushButton::clicked, this, [this] { report(false); });
    connect(m_export, &QPushButton::clicked, this, [this] { report(true); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    for (QPushButton* button : {m_print, m_export, close}) {
        button->setAutoDefault(false);
        bottom->addWidget(button);
    }
    return bottom;
}

void HistoryFileWindow::showChanges() {
    guarded(u"HistoryFileWindow:showChanges"_s, [&] {
        m_reading.stop();
        m_range.emplace(m_connection->engine(), dayIn(*m_from), dayIn(*m_to), HistoryOrder::NewestFirst);
        m_count.reset();
        m_listed = 0;
        m_changes->setColumns({{translated(u"Date"_s), widths[When]},
                               {translated(u"Who"_s), widths[Who]},
                               {QString(), widths[What]},
                               {translated(u"Record"_s), widths[Record]},
                               {translated(u"Field"_s), widths[Field]},
                               {translated(u"Before"_s)},
                               {translated(u"After"_s)}});
        m_changes->setRows({});
        readPiece();
    });
}

/// The rows first, then how many there are of those that are not listed.
void HistoryFileWindow::readPiece() {
    guarded(u"HistoryFileWindow:showChanges"_s, [&] {
        if (!isListed())
            listPiece();
        else if (m_count)
            m_count->countOn();
        if (isListed() && !m_range->isAtEnd() && !m_count)
            m_count.emplace(m_connection->engine(), dayIn(*m_from), dayIn(*m_to));
        showCount();
        if (!isListed() || (m_count && !m_count->isComplete()))
            m_reading.start();
    });
}

bool HistoryFileWindow::isListed() const { return m_range->isAtEnd() || m_changes->rowCount() >= mostLines; }

void HistoryFileWindow::listPiece() {
    std::vector<QStringList> rows;
    const auto room = static_cast<std::size_t>(mostLines - m_changes->rowCount());
    const QDeadlineTimer piece(pieceMilliseconds);
    const auto isEnough = [&] { return rows.size() >= leastRows || !m_range->hasAtHand(); };
    do {
        if (!m_range->hasAtHand()) {
            m_range->readOn();
            continue;
        }
        for (QStringList& line : historyLines(m_context, m_connection->engine(), *m_range->next()))
            rows.push_back(std::move(line));
        ++m_listed;
    } while (rows.size() < room && !m_range->isAtEnd() && !(piece.hasExpired() && isEnough()));
    m_changes->addRows(std::move(rows));
    for (QPushButton* button : {m_print, m_export})
        button->setEnabled(m_changes->rowCount() > 0);
}

void HistoryFileWindow::showCount() {
    const bool isCounted = m_count ? m_count->isComplete() : isListed();
    const QString count = platform::counted(translated(u"%1 change | %1 changes"_s),
                                            m_count && isCounted ? m_count->rows() : m_listed);
    m_changes->setTitle(isCounted ? count : count + u" …"_s,
                        m_count ? translated(u"The newest are listed; print and export have all."_s)
                                : QString());
}

void HistoryFileWindow::report(bool exportIt) {
    guarded(u"HistoryFileWindow:report"_s, [&] {
        auto made = std::make_unique<rptHistory>(m_context, m_connection, dayIn(*m_from), dayIn(*m_to));
        made->printerName = defaultPrinter(m_context);
        runReport(std::move(made), exportIt, u"\\ChangeHistory.xls"_s);
    });
}

}  // namespace sorvanto
