#include "screens/PriceTexts.h"
#include "screens/PriceWindow.h"

#include "platform/widgets/Caption.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;

const char* const boxNames[] = {"Name", "NDC", "Lot", "Price", "AWP", "Size", "Unit"};

}  // namespace

void PriceWindow::buildWindow() {
    m_message->setObjectName(u"lblMessage"_s);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    platform::setLook(*m_message, "caution");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addLayout(fileRow());
    column->addLayout(columnsRow());
    column->addWidget(m_message);
    column->addWidget(m_list, 1);
    column->addLayout(bottomRow());
    orderStops();
    const QSize room = screen() ? screen()->availableSize() : QSize(160 * grid, 90 * grid);
    resize(std::min(160 * grid, room.width() - 4 * grid), std::min(90 * grid, room.height() - 8 * grid));
}

/// From the boxes above to the list, and from there to the buttons.
void PriceWindow::orderStops() {
    QWidget* before = m_separator;
    const auto then = [&before](QWidget* next) {
        setTabOrder(before, next);
        before = next;
    };
    for (std::size_t i = 0; i < priceFields; ++i) {
        then(m_columnBoxes[i]);
        if (m_markBoxes[i])
            then(m_markBoxes[i]);
    }
    then(m_list->focusProxy());
    then(m_take);
    then(findChild<QPushButton*>(u"cmdClose"_s));
}

/// The file's name, and how it is read.
QLayout* PriceWindow::fileRow() {
    m_sheet->setObjectName(u"cboSheet"_s);
    m_encoding->setObjectName(u"cboEncoding"_s);
    m_separator->setObjectName(u"cboSeparator"_s);
    m_sheet->addItems(m_file.sheets());
    m_encoding->addItems({u"UTF-8"_s, u"UTF-16"_s, u"UTF-16 BE"_s, u"Windows-1252"_s, u"Windows-1251"_s});
    m_encoding->setCurrentIndex(static_cast<int>(m_file.encoding()));
    m_separator->addItem(translated(u"Comma"_s), QChar(u','));
    m_separator->addItem(translated(u"Semicolon"_s), QChar(u';'));
    m_separator->addItem(translated(u"Tab"_s), QChar(u'\t'));
    m_separator->addItem(translated(u"Bar |"_s), QChar(u'|'));
    auto* name = new QLabel(m_name, this);
    name->setTextFormat(Qt::PlainText);
    platform::setLook(*name, "heading");
    auto* row = new QHBoxLayout;
    row->setSpacing(grid);
    row->addWidget(name);
    row->addStretch();
    const auto add = [&](QComboBox& box, const QString& text, bool shown) {
        QLabel* caption = platform::captionFor(box, text);
        caption->setVisible(shown);
        box.setVisible(shown);
        row->addWidget(caption);
        row->addWidget(&box);
    };
    add(*m_sheet, translated(u"Sheet"_s), !m_file.isText());
    add(*m_encoding, translated(u"Encoding"_s), m_file.isText());
    add(*m_separator, translated(u"Separator"_s), m_file.isText());
    return row;
}

/// Above each other: what a column is, which it is, and the decimal mark of its numbers.
QLayout* PriceWindow::columnsRow() {
    auto* columns = new QGridLayout;
    columns->setHorizontalSpacing(grid);
    columns->setVerticalSpacing(grid / 2);
    for (int i = 0; i < static_cast<int>(priceFields); ++i) {
        const auto at = static_cast<std::size_t>(i);
        auto* box = new QComboBox(this);
        box->setObjectName(u"cbo"_s + QLatin1String(boxNames[at]));
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(8);
        m_columnBoxes[at] = box;
        const QString text = priceFieldText(static_cast<PriceField>(i));
        columns->addWidget(platform::captionFor(*box, text), 0, i);
        columns->addWidget(box, 1, i);
        columns->setColumnStretch(i, 1);
        if (!isAmount(static_cast<PriceField>(i)))
            continue;
        auto* mark = new QComboBox(this);
        mark->setObjectName(u"cboMark"_s + QLatin1String(boxNames[at]));
        mark->setAccessibleName(text + u", "_s + translated(u"decimal mark"_s));
        mark->addItems({u"1,234.56"_s, u"1.234,56"_s});
        mark->setPlaceholderText(translated(u"Decimal mark?"_s));
        m_markBoxes[at] = mark;
        columns->addWidget(mark, 2, i);
    }
    return columns;
}

QLayout* PriceWindow::bottomRow() {
    platform::setLook(*m_ticked, "quiet");
    m_ticked->setObjectName(u"lblHowTo"_s);
    m_take->setObjectName(u"cmdTake"_s);
    platform::setLook(*m_take, "primary");
    auto* close = new QPushButton(translated(u"Close"_s), this);
    close->setObjectName(u"cmdClose"_s);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_ticked, 1);
    for (QPushButton* button : {m_take, close}) {
        button->setAutoDefault(false);
        bottom->addWidget(button);
    }
    return bottom;
}

void PriceWindow::fillColumnBoxes() {
    QStringList names{u"–"_s};
    const QStringList found = headings(m_table, m_columns);
    for (int column = 0; column < found.size(); ++column) {
        const QString heading = found.at(column).simplified();
        names << QString::number(column + 1) + (heading.isEmpty() ? QString() : u": "_s + heading);
    }
    for (std::size_t i = 0; i < priceFields; ++i) {
        const QSignalBlocker quiet(m_columnBoxes[i]);
        m_columnBoxes[i]->clear();
        m_columnBoxes[i]->addItems(names);
        m_columnBoxes[i]->setCurrentIndex(m_columns.column[i] + 1);
        fillMarkBox(static_cast<PriceField>(i));
    }
}

void PriceWindow::fillMarkBox(PriceField field) {
    QComboBox* box = m_markBoxes[static_cast<std::size_t>(field)];
    if (!box)
        return;
    const QSignalBlocker quiet(box);
    const auto mark = m_columns.markOf(field);
    box->setEnabled(m_columns.has(field));
    box->setCurrentIndex(mark && m_columns.has(field) ? static_cast<int>(*mark) : -1);
}

}  // namespace sorvanto
