#include "screens/PriceWindow.h"

#include "history/HistoryBook.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Plurals.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/LongWork.h"
#include "records/ChangedMeanwhile.h"
#include "screens/PriceTexts.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// A sign that no font draws, by its number.
QString shownCode(QChar sign) {
    return u"U+%1"_s.arg(uint(sign.unicode()), 4, 16, QLatin1Char('0')).toUpper();
}

PriceProgress shownProgress(platform::LongWork& work) {
    return [&work](double done) { return work.goesOn(done); };
}

}  // namespace

PriceWindow::PriceWindow(platform::ConnectionPtr connection, PriceFile file, const QString& path,
                         QWidget* parent)
    : QDialog(parent), m_connection(std::move(connection)), m_file(std::move(file)),
      m_name(QFileInfo(path).fileName()), m_stock(stockedChemicals(m_connection)),
      m_sheet(new QComboBox(this)), m_encoding(new QComboBox(this)), m_separator(new QComboBox(this)),
      m_message(new QLabel(this)), m_list(new PriceList(this)), m_ticked(new QLabel(this)),
      m_take(new QPushButton(this)) {
    setObjectName(u"PriceWindow"_s);
    setWindowTitle(translated(u"Import prices"_s));
    buildWindow();
    guessSeparator();
    connect(m_sheet, &QComboBox::currentIndexChanged, this, &PriceWindow::read);
    connect(m_separator, &QComboBox::currentIndexChanged, this, &PriceWindow::read);
    connect(m_encoding, &QComboBox::currentIndexChanged, this, [this] {
        guessSeparator();
        read();
    });
    for (std::size_t i = 0; i < priceFields; ++i) {
        const auto field = static_cast<PriceField>(i);
        connect(m_columnBoxes[i], &QComboBox::currentIndexChanged, this,
                [this, field](int index) { chooseColumn(field, index - 1); });
        if (m_markBoxes[i])
            connect(m_markBoxes[i], &QComboBox::currentIndexChanged, this,
                    [this, field](int index) { chooseMark(field, index); });
    }
    connect(&m_list->rows(), &PriceRowsModel::ticksChanged, this, &PriceWindow::showTicks);
    connect(m_take, &QPushButton::clicked, this, &PriceWindow::take);
    read();
    m_list->setFocus();
}

void PriceWindow::guessSeparator() {
    if (!m_file.isText())
        return;
    const QSignalBlocker quiet(m_separator);
    const QChar separator = m_file.separatorIn(static_cast<TextEncoding>(m_encoding->currentIndex()));
    if (m_separator->findData(separator) < 0)
        m_separator->addItem(separator.isPrint() ? QString(separator) : shownCode(separator), separator);
    m_separator->setCurrentIndex(m_separator->findData(separator));
}

void PriceWindow::read() {
    guarded(u"PriceWindow:read"_s, [&] {
        m_list->rows().show(nullptr);
        m_weighed.reset();
        platform::LongWork work(translated(u"Reading the list"_s));
        ReadTable list = m_file.isText()
                             ? m_file.readText(static_cast<TextEncoding>(m_encoding->currentIndex()),
                                               m_separator->currentData().toChar(), shownProgress(work))
                             : m_file.readSheet(m_sheet->currentIndex(), shownProgress(work));
        m_table = std::move(list.table);
        m_columns = guessedColumns(m_table);
        m_trouble = priceFaultText(list.fault, list.detail);
        fillColumnBoxes();
        weigh();
    });
}

void PriceWindow::chooseColumn(PriceField field, int column) {
    guarded(u"PriceWindow:chooseColumn"_s, [&] {
        m_columns.column[static_cast<std::size_t>(field)] = column;
        findMark(m_table, m_columns, field);
        fillMarkBox(field);
        weigh();
    });
}

void PriceWindow::chooseMark(PriceField field, int index) {
    if (index < 0)
        return;
    guarded(u"PriceWindow:chooseMark"_s, [&] {
        m_columns.mark[static_cast<std::size_t>(field)] = static_cast<DecimalMark>(index);
        weigh();
    });
}

QString PriceWindow::toBeSaid() const {
    if (!m_trouble.isEmpty())
        return m_trouble;
    if (!m_columns.has(PriceField::price))
        return translated(u"Choose the column that has the price of a pack."_s);
    if (!m_columns.has(PriceField::ndc) && !m_columns.has(PriceField::lot) &&
        !m_columns.has(PriceField::name))
        return translated(u"Choose the column that has the NDC, the lot or the name."_s);
    for (std::size_t i = 0; i < priceFields; ++i) {
        const auto field = static_cast<PriceField>(i);
        if (!isAmount(field) || !m_columns.has(field) || m_columns.markOf(field))
            continue;
        PriceColumns columns = m_columns;
        return translated(u"%1: \"%2\" can be read in two ways. Choose the decimal mark of this column."_s)
            .replace(u"%1"_s, priceFieldText(field))
            .replace(u"%2"_s, findMark(m_table, columns, field).example);
    }
    return {};
}

void PriceWindow::weigh() {
    m_list->rows().show(nullptr);
    m_weighed.reset();
    QString message = toBeSaid();
    if (message.isEmpty()) {
        platform::LongWork work(translated(u"Comparing prices"_s));
        m_weighed.reset(new WeighedPrices{m_table, m_columns, *m_stock,
                                          PriceProposals(m_table, m_columns, *m_stock, shownProgress(work))});
        if (m_weighed->proposals.stopped()) {
            message = priceFaultText(PriceFault::stopped, {});
            m_weighed.reset();
        }
    }
    say(message);
    m_list->rows().show(m_weighed.get());
}

void PriceWindow::say(const QString& message) {
    m_message->setText(message);
    m_message->setVisible(!message.isEmpty());
}

void PriceWindow::showTicks() {
    const int ticked = m_weighed ? m_weighed->proposals.ticked() : 0;
    m_take->setText(platform::counted(translated(u"Take %1 price | Take %1 prices"_s), ticked));
    platform::giveAccessKeys(*this);
    m_take->setEnabled(ticked > 0);
    QStringList counts;
    const auto count = [&](const QString& forms, std::initializer_list<PriceState> states) {
        int all = 0;
        for (const PriceState state : states)
            all += m_weighed ? m_weighed->proposals.count(state) : 0;
        if (all > 0)
            counts << platform::counted(forms, all);
    };
    count(translated(u"%1 change | %1 changes"_s), {PriceState::change});
    count(translated(u"%1 unchanged | %1 unchanged"_s), {PriceState::unchanged});
    count(translated(u"%1 double | %1 doubles"_s), {PriceState::repeated});
    count(translated(u"%1 unknown | %1 unknown"_s), {PriceState::unknown, PriceState::tooMany});
    count(translated(u"%1 without a price | %1 without a price"_s),
          {PriceState::noPrice, PriceState::unreadable, PriceState::noWay});
    m_list->setRemark(counts.join(u" · "_s));
    m_ticked->setText(
        m_weighed ? translated(u"Space ticks the chosen rows. Nothing is written before you press Take."_s)
                  : QString());
}

Taken PriceWindow::write() {
    platform::LongWork work(translated(u"Taking prices"_s));
    return takePrices(m_connection, m_weighed->proposals, *m_stock, m_name, shownProgress(work));
}

void PriceWindow::take() {
    guarded(u"PriceWindow:take"_s, [&] {
        const int ticked = m_weighed ? m_weighed->proposals.ticked() : 0;
        if (ticked == 0)
            return;
        switch (write()) {
        case Taken::All:
            m_taken = ticked;
            accept();
            break;
        case Taken::Stopped:
            say(translated(u"Stopped: no price was taken."_s));
            break;
        case Taken::ChangedMeanwhile:
            weighAnew();
        }
    });
}

void PriceWindow::weighAnew() {
    const std::vector<StockedChemical> shown = m_stock->chemicals();
    m_list->rows().show(nullptr);
    m_weighed.reset();
    m_stock.emplace(stockedChemicals(m_connection));
    weigh();
    const auto changed = std::find_if(shown.begin(), shown.end(), [this](const StockedChemical& chemical) {
        const auto& now = m_stock->chemicals();
        return std::find(now.begin(), now.end(), chemical) == now.end();
    });
    const QString changer = changed == shown.end()
                                ? QString()
                                : lastChanger(m_connection->engine(), {{u"Chemical"_s, changed->key}});
    const QString text =
        changer.isEmpty()
            ? translated(
                  u"Another program has changed chemicals meanwhile, so nothing was taken. The list now "
                  "shows them as they are: look at it again."_s)
            : changedText({changed->name, changer});
    platform::MsgBox(text, {platform::Buttons::Ok, platform::Icon::Exclamation});
}

}  // namespace sorvanto
