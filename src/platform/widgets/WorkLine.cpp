#include "platform/widgets/WorkLine.h"

#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
constexpr int barSteps = 1000;
}

WorkLine::WorkLine(QWidget* parent)
    : QWidget(parent), m_bar(new QProgressBar(this)), m_stop(new QPushButton(widgetText(u"Stop"_s), this)) {
    setObjectName(u"workLine"_s);
    m_bar->setTextVisible(false);
    m_bar->setFixedWidth(20 * grid);
    m_stop->setObjectName(u"cmdStop"_s);
    m_stop->setAutoDefault(false);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(2 * grid);
    line->addWidget(m_bar);
    line->addWidget(m_stop);
    connect(m_stop, &QPushButton::clicked, this, [this] { m_stopped = true; });
    hide();
}

void WorkLine::start(const QString& what) {
    m_stopped = false;
    m_bar->setAccessibleName(what);
    setDone(-1);
}

void WorkLine::setDone(double done) {
    m_bar->setRange(0, done < 0 ? 0 : barSteps);
    if (done >= 0)
        m_bar->setValue(static_cast<int>(done * barSteps));
}

void WorkLine::end() { hide(); }

}  // namespace platform
