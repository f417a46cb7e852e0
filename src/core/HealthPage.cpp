#include "core/HealthPage.h"

#include "core/CopySettings.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/FocusMark.h"
#include "platform/widgets/Theme.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;

constexpr int rowHeight = 6 * grid;
constexpr int dotSize = 10;
constexpr int pollingPause = 50;  // milliseconds

/// Never by color alone: full where all is well, a ring where it is not.
QPixmap dot(bool good, qreal ratio) {
    QPixmap picture(QSize(dotSize, dotSize) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto& colors = platform::theme();
    if (good) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors.good);
        painter.drawEllipse(QRectF(0, 0, dotSize, dotSize));
    } else {
        painter.setPen(QPen(colors.warning, 2));
        painter.drawEllipse(QRectF(1, 1, dotSize - 2, dotSize - 2));
    }
    return picture;
}

QLabel* label(const QString& text, const char* look = nullptr) {
    auto* made = new QLabel(text);
    made->setTextFormat(Qt::PlainText);
    made->setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (look)
        platform::setLook(*made, look);
    return made;
}

/// A server looks after its pages itself.
QString openFile(const Context& context) {
    const auto connection = context.connection;
    return connection ? connection->file() : QString();
}

}  // namespace

HealthPage::HealthPage(const Context& context, std::function<WindowHealth()> source, QWidget* parent,
                       Check problems)
    : QDialog(parent), m_context(context), m_source(std::move(source)), m_problems(std::move(problems)),
      m_card(new QFrame(this)), m_place(new QLineEdit(this)), m_summary(new QLabel(this)),
      m_again(new QPushButton(translated(u"Check again"_s), this)) {
    setObjectName(u"HealthPage"_s);
    setWindowTitle(translated(u"Health"_s));
    m_card->setObjectName(u"fraHealth"_s);
    platform::makeCard(*m_card);
    m_summary->setObjectName(u"lblSummary"_s);
    platform::setLook(*m_summary, "heading");
    m_again->setObjectName(u"cmdAgain"_s);
    auto* close = new QPushButton(translated(u"Close"_s), this);
    close->setObjectName(u"cmdClose"_s);
    platform::setLook(*close, "primary");
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_again, &QPushButton::clicked, this, &HealthPage::check);
    addSecondPlace();

    auto* page = new QWidget;
    auto* cards = new QVBoxLayout(page);
    cards->setContentsMargins(3 * grid, 3 * grid, 3 * grid, grid);
    cards->addWidget(m_card);
    cards->addStretch();
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(page);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setAccessibleName(windowTitle());
    new platform::FocusMark(*scroll);  // the arrow keys scroll it
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(3 * grid, 0, 3 * grid, 2 * grid);
    buttons->setSpacing(grid);
    buttons->addWidget(m_summary, 1);
    buttons->addWidget(m_again);
    buttons->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(grid);
    column->addWidget(scroll, 1);
    column->addLayout(buttons);

    platform::giveAccessKeys(*this);

    m_poll.setInterval(pollingPause);
    m_poll.callOnTimeout(this, &HealthPage::look);
    check();
    for (QWidget* each : m_card->findChildren<QWidget*>())
        each->ensurePolished();  // the widths of bold texts
    m_card->layout()->invalidate();
    fitScreen();
    close->setFocus();
}

// As wide as its lines are, up to the screen's width; what doesn't fit beside a line stands below it.
void HealthPage::fitScreen() {
    constexpr int aside = 10 * grid;   // page and card around the lines
    constexpr int around = 14 * grid;  // and the buttons below
    const QSize room = (screen() ? screen()->availableSize() : QSize(1024, 768)) - QSize(4 * grid, 8 * grid);
    m_narrow = m_card->layout()->totalSizeHint().width() + aside > room.width();
    if (m_narrow)
        showLines();
    const auto& rows = *m_card->layout();
    const int width = qMin(qMax(90 * grid, rows.totalSizeHint().width() + aside), room.width());
    const int height = qMax(rows.totalSizeHint().height(), rows.totalHeightForWidth(width - aside)) + around;
    resize(width, qMin(height, room.height()));
}

HealthPage::~HealthPage() { *m_cancelled = true; }

void HealthPage::addSecondPlace() {
    m_place->setObjectName(u"txtSecondPlace"_s);
    m_place->setAccessibleName(translated(u"Second place for copies"_s));
    m_place->setPlaceholderText(translated(u"Folder on a stick or a share"_s));
    m_place->setText(CopySettings::read().secondPlace);
    m_place->ensurePolished();
    m_place->setMinimumWidth(m_place->fontMetrics().horizontalAdvance(m_place->placeholderText()) + 4 * grid);
    connect(m_place, &QLineEdit::editingFinished, this, &HealthPage::setSecondPlace);
}

void HealthPage::setSecondPlace() {
    guarded(u"HealthPage:setSecondPlace"_s, [&] {
        CopySettings settings = CopySettings::read();
        if (settings.secondPlace == m_place->text().trimmed())
            return;
        settings.secondPlace = m_place->text().trimmed();
        settings.write();
        check();
    });
}

void HealthPage::check() {
    guarded(u"HealthPage:check"_s, [&] {
        if (m_check.valid())
            return;
        m_lines = healthLines(m_context, m_source());
        if (const QString file = openFile(m_context); !file.isEmpty()) {
            m_lines.front().note = translated(u"Being checked"_s);
            std::packaged_task<QStringList()> task([file, problems = m_problems, cancelled = m_cancelled] {
                return problems(file, [cancelled] { return cancelled->load(); });
            });
            std::future<QStringList> found = task.get_future();
            std::thread(std::move(task)).detach();
            m_check = std::move(found);
            m_poll.start();
        }
        showLines();
    });
}

void HealthPage::look() {
    if (!m_check.valid() || m_check.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return;
    m_poll.stop();
    guarded(u"HealthPage:check"_s, [&] {
        QStringList problems;
        try {
            problems = m_check.get();
        } catch (const platform::RuntimeError& failure) {
            problems << failure.description();
        }
        m_lines.front() = checkedDatabase(m_context, problems, m_source());
        showLines();
    });
}

void HealthPage::showLines() {
    m_place->setParent(this);
    m_place->hide();
    delete m_card->layout();
    qDeleteAll(m_card->findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
    auto* rows = new QGridLayout(m_card);
    rows->setContentsMargins(3 * grid, grid, 3 * grid, grid);
    rows->setHorizontalSpacing(2 * grid);
    rows->setVerticalSpacing(0);
    rows->setColumnStretch(3, 1);
    int row = 0;
    for (const HealthLine& line : m_lines)
        addLine(row++, line);
    for (QWidget* each : m_card->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        each->show();  // at once: the layout would do it a turn later, and the lines would blink
    const auto bad =
        std::count_if(m_lines.begin(), m_lines.end(), [](const HealthLine& line) { return !line.good; });
    m_summary->setText(bad == 0
                           ? translated(u"All is well"_s)
                           : translated(u"Things to look at: %1"_s).replace(u"%1"_s, QString::number(bad)));
}

void HealthPage::addLine(int row, const HealthLine& line) {
    auto& rows = dynamic_cast<QGridLayout&>(*m_card->layout());
    const int top = 4 * row;
    if (row > 0) {
        auto* rule = new QFrame(m_card);
        platform::makeRule(*rule);
        rows.addWidget(rule, top, 0, 1, 4);
    }
    auto* mark = new QLabel(m_card);
    mark->setPixmap(dot(line.good, devicePixelRatioF()));
    mark->setAccessibleName(line.good ? translated(u"Good"_s) : translated(u"To be looked at"_s));
    auto* state = label(line.state, line.good ? nullptr : "caution");
    rows.addWidget(mark, top + 1, 0);
    rows.addWidget(label(line.name), top + 1, 1);
    rows.addWidget(state, top + 1, 2);
    rows.setRowMinimumHeight(top + 1, rowHeight - 1);
    if (line.isSecondPlace)
        addAside(*m_place, top);
    else if (!line.note.isEmpty())
        addAside(*label(line.note, "quiet"), top);
    if (line.detail.isEmpty())
        return;
    auto* detail = label(line.detail, "quiet");
    detail->setWordWrap(true);
    QSizePolicy policy = detail->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);  // a path without blanks can't be wrapped
    detail->setSizePolicy(policy);
    detail->setToolTip(line.detail);
    detail->setContentsMargins(0, 0, 0, 12);
    rows.addWidget(detail, top + 3, 1, 1, 3);
}

void HealthPage::addAside(QWidget& what, int top) {
    auto& rows = dynamic_cast<QGridLayout&>(*m_card->layout());
    if (auto* text = qobject_cast<QLabel*>(&what)) {
        text->setAlignment((m_narrow ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
        text->setWordWrap(true);
        text->setContentsMargins(0, 0, 0, m_narrow ? grid : 0);
    } else if (m_narrow) {
        rows.setRowMinimumHeight(top + 3, grid);
    }
    rows.addWidget(&what, m_narrow ? top + 2 : top + 1, m_narrow ? 1 : 3, 1, m_narrow ? 3 : 1);
    what.show();
}

}  // namespace sorvanto
