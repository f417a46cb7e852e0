#include "core/ErrorReportList.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/Theme.h"
#include "shared/ErrorReporter.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

enum Column { time, tag, number, description, count, columns };

QString fullText(const ErrorReport& report) {
    QString text = u"%1   %2\n%3  %4\n%5"_s.arg(platform::dateText(report.time), report.tag, report.number,
                                                report.source, report.description);
    if (!report.statement.isEmpty())
        text += u"\n\n"_s + report.statement;
    return text;
}

}  // namespace

ErrorReportList::ErrorReportList(std::weak_ptr<ErrorReporter> reporter, QWidget* parent)
    : QDialog(parent), m_reporter(std::move(reporter)), m_table(new QTableWidget(0, columns, this)),
      m_text(new QPlainTextEdit(this)) {
    setObjectName(u"ErrorReportList"_s);
    setWindowTitle(translated(u"Reports"_s));
    m_table->setObjectName(u"grdReports"_s);
    m_table->setHorizontalHeaderLabels({translated(u"When"_s), translated(u"Procedure"_s),
                                        translated(u"Number"_s), translated(u"Description"_s),
                                        translated(u"Count"_s)});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(description, QHeaderView::Stretch);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setStyleSheet(
        u"QTableWidget { outline: 0; } QTableWidget::item { border: 0; padding: 0 8px; }"_s);
    m_text->setObjectName(u"txtReport"_s);
    m_text->setReadOnly(true);
    m_text->setMaximumHeight(20 * platform::grid);

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
        const QString texts[columns] = {platform::dateText(report->time), report->tag, report->number,
                                        report->description.simplified(), QString::number(report->count)};
        for (int column = 0; column < columns; ++column) {
            auto* item = new QTableWidgetItem(texts[column]);
            if (column == number || column == count)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(row, column, item);
        }
    }
    if (row > 0)
        m_table->selectRow(hadChosen ? qMax(0, row - chosenFromEnd) : 0);
    showChosen();
}

void ErrorReportList::showChosen() {
    const auto reporter = m_reporter.lock();
    const int row = m_table->currentRow();
    const int last = reporter ? static_cast<int>(reporter->reports().size()) - 1 : -1;
    const bool chosen = row >= 0 && row <= last;
    m_text->setPlainText(chosen ? fullText(reporter->reports()[static_cast<std::size_t>(last - row)])
                                : QString());
    m_copy->setEnabled(chosen);
}

void ErrorReportList::copyChosen() { QApplication::clipboard()->setText(m_text->toPlainText()); }

}  // namespace sorvanto
