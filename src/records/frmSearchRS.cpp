// The list dialog: picking a row by click, key or double-click.
#include "records/frmSearchRS.h"

#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/WidestText.h"
#include "records/ListTypeAhead.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmSearchRS.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QScreen>
#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int looked = 200;       // rows, and characters of a cell, that a column's width is made for
constexpr int cellMargins = 22;   // pixels
constexpr int listMargins = 68;   // from the window's edges to the columns
constexpr int frameMargins = 16;  // of the desktop's frame, and a little air

bool isText(platform::FieldKind kind) {
    return kind == platform::FieldKind::Text || kind == platform::FieldKind::LongText;
}

/// Long texts and identifiers are cut before names and numbers are.
bool givesRoom(const platform::Recordset& rows, int field) {
    if (field >= rows.fieldCount())
        return false;
    const platform::FieldInfo& info = rows.fieldInfo(field);
    return info.kind == platform::FieldKind::LongText ||
           info.baseColumn.endsWith(u"_GUID"_s, Qt::CaseInsensitive);
}

/// The first visible column of text, -1 when there is none.
int typedColumn(const platform::Recordset& rows) {
    for (int field = 1; field < rows.fieldCount(); ++field)
        if (isText(rows.fieldInfo(field).kind))
            return field;
    return -1;
}

}  // namespace

frmSearchRS::frmSearchRS(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmSearchRS>()), m_typeAhead(new ListTypeAhead(this)) {
    m_ui->setupUi(this);
    platform::makeCard(*m_ui->fraList);
    m_ui->lblCount->setProperty("quiet", true);
    m_ui->lblTyped->setProperty("heading", true);
    m_ui->lblTyped->setTextFormat(Qt::PlainText);
    m_ui->TDBList1->setAllowUpdate(false);
    m_ui->TDBList1->installEventFilter(this);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmSearchRS::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmSearchRS::cmdCancel_Click);
    connect(m_ui->TDBList1, &QTableView::doubleClicked, this, &frmSearchRS::TDBList1_DblClick);
    connect(m_ui->TDBList1, &QTableView::clicked, m_typeAhead, &ListTypeAhead::clear);
    connect(m_typeAhead, &ListTypeAhead::found, this, &frmSearchRS::goToRow);
    connect(m_typeAhead, &ListTypeAhead::wordChanged, m_ui->lblTyped, &QLabel::setText);
    Form_Load();
}

frmSearchRS::~frmSearchRS() { m_ui->TDBList1->removeEventFilter(this); }

void frmSearchRS::Form_Load() {
    guarded(u"frmSearchRS:Form_Load"_s, [&] {
        m_ui->cmdOK->setText(translated(u"OK"_s));
        m_ui->cmdCancel->setText(translated(u"Cancel"_s));
        setWindowTitle(translated(u"Search Records"_s));
        m_ui->TDBList1->setAccessibleName(windowTitle());
    });
}

void frmSearchRS::Form_Activate() {
    guarded(u"frmSearchRS:Form_Activate"_s, [&] {
        m_ui->TDBList1->scrollToTop();
        m_ui->TDBList1->setFocus();
    });
}

void frmSearchRS::setRows(const platform::RecordsetPtr& rows) {
    m_rows = rows;
    m_ui->TDBList1->setDataSource(rows);
    m_typeAhead->setRows(rows, typedColumn(platform::deref(rows)));
    connect(m_ui->TDBList1->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmSearchRS::showPosition, Qt::UniqueConnection);
    m_ui->TDBList1->clearSelection();  // nothing is chosen for the user
    showPosition();
}

void frmSearchRS::setColumns(std::vector<platform::GridColumn> columns) {
    if (!columns.empty())
        columns.front().hidden = true;
    m_ui->TDBList1->setColumns(std::move(columns));
    m_ui->TDBList1->clearSelection();
}

ListMeasure frmSearchRS::measure() const {
    const int character = m_ui->TDBList1->fontMetrics().averageCharWidth() + 1;
    return {character, 22 * character};  // the default holds a date with its time
}

// Row by row, since the set keeps fewer rows than are looked at.
std::vector<int> frmSearchRS::neededWidths() const {
    const QAbstractItemModel& model = *m_ui->TDBList1->model();
    const platform::RecordGrid& grid = *m_ui->TDBList1;
    std::vector<platform::WidestText> widest(grid.columns().size(), platform::WidestText(grid.fontMetrics()));
    for (int row = 0; row < std::min(model.rowCount(), looked); ++row) {
        for (std::size_t i = 0; i < widest.size(); ++i)
            widest[i].add(model.index(row, static_cast<int>(i)).data().toString().left(looked));
    }
    std::vector<int> widths;
    for (std::size_t i = 0; i < widest.size(); ++i)
        widths.push_back(std::max(widest[i].width() + cellMargins,
                                  grid.horizontalHeader()->sectionSizeHint(static_cast<int>(i))));
    return widths;
}

void frmSearchRS::fit() {
    platform::RecordGrid& grid = *m_ui->TDBList1;
    const std::vector<int> needed = neededWidths();
    std::vector<ColumnNeed> columns;
    for (int i = 0; i < static_cast<int>(grid.columns().size()); ++i) {
        const platform::GridColumn& column = grid.columns()[static_cast<std::size_t>(i)];
        if (column.hidden)
            columns.push_back({});
        else
            columns.push_back({column.width, needed[static_cast<std::size_t>(i)],
                               givesRoom(platform::deref(m_rows), i),
                               grid.horizontalHeader()->sectionSizeHint(i)});
    }
    const int most = screen()->availableGeometry().width() - frameMargins;
    const int around = listMargins + grid.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const std::vector<int> widths = fittedWidths(columns, most - around);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (widths[i] > 0)
            grid.setColumnWidth(static_cast<int>(i), widths[i]);
    }
    const int sum = std::accumulate(widths.begin(), widths.end(), 0);
    resize(std::min(std::max(minimumWidth(), sum + around), most), height());
}

int frmSearchRS::currentRow() const {
    const auto* selection = m_ui->TDBList1->selectionModel();
    return selection && selection->hasSelection() ? selection->selectedIndexes().front().row() : -1;
}

void frmSearchRS::goToRow(int row) {
    m_ui->TDBList1->selectRow(row);
    m_ui->TDBList1->scrollTo(
        m_ui->TDBList1->model()->index(row, std::max(1, m_ui->TDBList1->currentIndex().column())));
}

void frmSearchRS::showPosition() {
    const QLocale locale;
    const QString count = locale.toString(static_cast<qlonglong>(m_rows ? m_rows->recordCount() : 0));
    const int row = currentRow();
    m_ui->lblCount->setText(row < 0 ? count : locale.toString(row + 1) + u" / "_s + count);
}

void frmSearchRS::cmdOK_Click() {
    guarded(u"frmSearchRS:cmdOK_Click"_s, [&] {
        const int row = currentRow();
        if (row < 0) {
            platform::MsgBox(translated(u"Select a row before clicking OK"_s),
                             {platform::Buttons::Ok, platform::Icon::Information});
            return;
        }
        m_succeed = true;
        m_id = platform::deref(m_rows).valueAt(row, 0);
        hide();
    });
}

void frmSearchRS::TDBList1_DblClick() {
    guarded(u"frmSearchRS:TDBList1_DblClick"_s, [&] { cmdOK_Click(); });
}

void frmSearchRS::cmdCancel_Click() {
    guarded(u"frmSearchRS:cmdCancel_Click"_s, [&] {
        m_succeed = false;
        hide();
    });
}

void frmSearchRS::reject() { cmdCancel_Click(); }

void frmSearchRS::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    Form_Activate();
}

bool frmSearchRS::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->TDBList1 && event->type() == QEvent::KeyPress)
        return takeKey(static_cast<QKeyEvent&>(*event));
    return QDialog::eventFilter(watched, event);
}

bool frmSearchRS::takeKey(QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        cmdOK_Click();
        return true;
    case Qt::Key_Escape:
        if (m_typeAhead->word().isEmpty())
            return false;
        m_typeAhead->clear();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
    case Qt::Key_Home:
    case Qt::Key_End:
        m_typeAhead->clear();
        if (currentRow() >= 0)
            return false;
        goToRow(key.key() == Qt::Key_End ? static_cast<int>(m_rows->recordCount()) - 1 : 0);
        return true;
    default:
        return m_typeAhead->takeKey(key, currentRow());
    }
}

}  // namespace sorvanto
