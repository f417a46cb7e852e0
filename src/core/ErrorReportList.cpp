#include "core/ErrorReportList.h"

#include "core/ProblemTexts.h"
#include "platform/basic/Dates.h"
#include "platform/widgets/FocusMark.h"
#include "platform/widgets/Theme.h"
#include "shared/ErrorReporter.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

enum Column { time, problem, count, columns };

/// The report as it stands in errors.log, each value beside its name in the user's language.
QString technicalText(const ErrorReport& report) {
    const std::pair<const char*, QString> parts[] = {{"Procedure", report.tag},
                                                     {"Number", report.number},
                                                     {"Source", report.source},
                                                     {"Description", report.description},
                                                     {"Statement", report.statement}};
    QStringList lines{translated(u"When"_s) + '\t'_L1 + platform::dateText(report.time)};
    for (const auto& [name, value] : parts) {
        if (!value.isEmpty())
            lines << translated(QLatin1String(name)) + '\t'_L1 + value;
    }
    return lines.join('\n'_L1);
}

/// Room for the widest of the names before the values.
qreal tabWidth(const QFontMetrics& metrics) {
    int widest = 0;
    for (const QString& name :
         {u"When"_s, u"Procedure"_s, u"Number"_s, u"Source"_s, u"Description"_s, u"Statement"_s})
        widest = qMax(widest, metrics.horizontalAdvance(translated(name)));
    return widest + 2 * platform::grid;
}

}  // namespace

ErrorReportList::ErrorReportList(std::weak_ptr<ErrorReporter> reporter, QWidget* parent)
    : QDialog(parent), m_reporter(std::move(reporter)), m_table(new QTableWidget(0, columns, this)),
      m_text(new QPlainTextEdit(this)) {
    setObjectName(u"ErrorReportList"_s);
    setWindowTitle(translated(u"Problems"_s));
    m_table->setObjectName(u"grdReports"_s);
    m_table->setAccessibleName(windowTitle());
    new platform::FocusMark(*m_table);
    m_table->setHorizontalHeaderLabels(
        {translated(u"When"_s), translated(u"Problem"_s), translated(u"Count"_s)});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(problem, QHeaderView::Stretch);
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->setWordWrap(true);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_text->setObjectName(u"txtReport"_s);
    m_text->setAccessibleName(translated(u"Details"_s));
    m_text->setReadOnly(true);
    m_text->setMaximumHeight(20 * platform::grid);
    m_text->setTabStopDistance(tabWidth(m_text->fontMetrics()));
    auto* details = new QLabel(translated(u"Details"_s), this);
    details->setBuddy(m_text);

    auto* buttons = new QDialogButtonBox(this);
    m_copy = buttons->addButton(translated(u"Copy"_s), QDialogButtonBox::ActionRole);
    auto* close = buttons->addButton(translated(u"Close"_s), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    connect(m_copy, &QPushButton::clicked, this, &ErrorReportList::copyChosen);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &ErrorReportList::showChosen);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2 * platform::grid, 2 * platform::grid, 2 * platform::grid,
                               2 * platform::grid);
    column->setSpacing(platform::grid);
    column->addWidget(m_table, 1);
    column->addWidget(details);
    column->addWidget(m_text);
    column->addWidget(buttons);
    resize(110 * platform::grid, 60 * platform::grid);
}

void ErrorReportList::showReports() {
    const auto reporter = m_reporter.lock();
    if (!reporter)
        return;
    const auto& reports = reporter->reports();
    const int chosenFromEnd = m_table->rowCount() - m_table->currentRow();
    const bool hadChosen = m_table->currentRow() >= 0;
    m_table->setRowCount(static_cast<int>(reports.size()));
    int row = 0;
    for (auto report = reports.rbegin(); report != reports.rend(); ++report, ++row) {
        const QString texts[columns] = {platform::dateText(report->time), problemText(*report),
                                        QString::number(report->count)};
        for (int column = 0; column < columns; ++column) {
            auto* item = new QTableWidgetItem(texts[column]);
            if (column == count)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(row, column, item);
        }
    }
    if (row > 0)
        m_table->selectRow(hadChosen ? qMax(0, row - chosenFromEnd) : 0);
    showChosen();
}

const ErrorReport* ErrorReportList::chosen(const std::shared_ptr<ErrorReporter>& reporter) const {
    const int row = m_table->currentRow();
    const int last = reporter ? static_cast<int>(reporter->reports().size()) - 1 : -1;
    return row >= 0 && row <= last ? &reporter->reports()[static_cast<std::size_t>(last - row)] : nullptr;
}

void ErrorReportList::showChosen() {
    const auto reporter = m_reporter.lock();
    const ErrorReport* report = chosen(reporter);
    m_text->setPlainText(report ? technicalText(*report) : QString());
    m_copy->setEnabled(report);
}

void ErrorReportList::copyChosen() {
    const auto reporter = m_reporter.lock();
    if (const ErrorReport* report = chosen(reporter))
        QApplication::clipboard()->setText(problemText(*report) + u"\n\n"_s + technicalText(*report));
}

}  // namespace sorvanto
