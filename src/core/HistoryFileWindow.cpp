#include "core/HistoryFileWindow.h"

#include "core/TraceList.h"
#include "history/HistoryRange.h"
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
constexpr std::size_t mostLines = 5000;  // paper and spreadsheet have all
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
        platform::Engine& database = m_connection->engine();
        const QDate first = dayIn(*m_from);
        const QDate last = dayIn(*m_to);
        std::vector<QStringList> rows;
        HistoryRange range(database, first, last, HistoryOrder::NewestFirst);
        std::int64_t changes = 0;
        for (auto entry = range.next(); entry && rows.size() < mostLines; entry = range.next(), ++changes) {
            for (QStringList& line : historyLines(m_context, database, *entry))
                rows.push_back(std::move(line));
        }
        const bool all = rows.size() < mostLines;
        m_changes->setTitle(platform::counted(translated(u"%1 change | %1 changes"_s),
                                              all ? changes : historyRows(database, first, last)),
                            all ? QString()
                                : translated(u"The newest are listed; print and export have all."_s));
        m_changes->setColumns({{translated(u"Date"_s), widths[When]},
                               {translated(u"Who"_s), widths[Who]},
                               {QString(), widths[What]},
                               {translated(u"Record"_s), widths[Record]},
                               {translated(u"Field"_s), widths[Field]},
                               {translated(u"Before"_s)},
                               {translated(u"After"_s)}});
        for (QPushButton* button : {m_print, m_export})
            button->setEnabled(!rows.empty());
        m_changes->setRows(std::move(rows));
    });
}

void HistoryFileWindow::report(bool exportIt) {
    guarded(u"HistoryFileWindow:report"_s, [&] {
        auto made = std::make_unique<rptHistory>(m_context, m_connection, dayIn(*m_from), dayIn(*m_to));
        made->printerName = defaultPrinter(m_context);
        runReport(std::move(made), exportIt, u"\\ChangeHistory.xls"_s);
    });
}

}  // namespace sorvanto
