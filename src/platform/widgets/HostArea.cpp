// Each hosted window gets a page of its own, made when it is first shown in the middle.
#include "platform/widgets/HostArea.h"

#include "platform/widgets/FocusLoss.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int rightWidth = 312;

/// Puts a window into a scroll area without a background of its own.
void host(QScrollArea& area, QWidget& form) {
    area.setWidget(&form);
    area.viewport()->setAutoFillBackground(false);
    form.setAutoFillBackground(false);
}

/// A page that is as wide and high as its place and scrolls only when the window can't shrink further.
class Page : public QScrollArea {
public:
    explicit Page(QWidget* parent) : QScrollArea(parent) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
    }
    QSize minimumSizeHint() const override { return {200, 120}; }
};

/// The column at the right: never narrower than its content needs.
class RightColumn : public QScrollArea {
public:
    explicit RightColumn(QWidget* parent) : QScrollArea(parent) {
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    }
    QSize sizeHint() const override {
        return {widget() ? qMax(rightWidth, widget()->minimumSizeHint().width() + 1) : rightWidth, 200};
    }
    QSize minimumSizeHint() const override { return {sizeHint().width(), 120}; }
};

}  // namespace

/// The windows in the middle with their companion.
class HostArea::Middle : public QWidget {
public:
    Middle(QStackedWidget& pages, QWidget* parent) : QWidget(parent), m_pages(pages) {
        m_pages.setParent(this);
        connect(&m_pages, &QStackedWidget::currentChanged, this, [this] { layOut(); });
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }
    void setCompanion(QWidget& widget) {
        m_companion = &widget;
        widget.setParent(this);
        widget.hide();
    }
    void place(Companion place) {
        m_place = m_companion ? place : Companion::Hidden;
        layOut();
        m_pages.setVisible(m_place != Companion::Instead);
        if (!m_companion)
            return;
        if (m_place == Companion::Hidden && m_companion->isAncestorOf(QApplication::focusWidget()))
            giveFocusInto(m_pages);  // not to what stands beside
        m_companion->setVisible(m_place != Companion::Hidden);
    }
    QWidget* companion() const { return m_companion; }
    QSize minimumSizeHint() const override { return m_pages.minimumSizeHint(); }
    QSize sizeHint() const override { return m_pages.sizeHint(); }

protected:
    void resizeEvent(QResizeEvent*) override { layOut(); }

private:
    void layOut() {
        const bool beside = m_place == Companion::Beside;
        const int form = beside ? std::min(std::max(formWidth, neededByForm()), width()) : width();
        m_pages.setGeometry(0, 0, form, height());
        const int left = beside ? form - margin + gap : margin;
        if (m_companion)
            m_companion->setGeometry(left, topMargin, std::max(0, width() - left - margin),
                                     std::max(0, height() - topMargin - margin));
    }

    /// Long captions of a language may need more than a form has else, or the form asks for it.
    int neededByForm() const {
        const auto* page = qobject_cast<const QScrollArea*>(m_pages.currentWidget());
        const QWidget* form = page ? page->widget() : nullptr;
        return form ? std::max(form->minimumSizeHint().width(), form->property(besideWidth).toInt()) : 0;
    }

    static constexpr int margin = 24;  ///< what a hosted window leaves free at its sides
    static constexpr int topMargin = 16;
    static constexpr int gap = 16;
    static constexpr int formWidth = 824 + 2 * margin;

    QStackedWidget& m_pages;
    QWidget* m_companion = nullptr;
    Companion m_place = Companion::Hidden;
};

HostArea::HostArea(QWidget* parent)
    : QWidget(parent), m_middle(new QVBoxLayout), m_pages(new QStackedWidget(this)),
      m_room(new Middle(*m_pages, this)), m_blank(new QWidget(this)), m_kept(new QWidget(this)),
      m_right(new RightColumn(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    m_middle->setContentsMargins(0, 0, 0, 0);
    m_middle->setSpacing(0);
    m_middle->addWidget(m_room, 1);
    row->addLayout(m_middle, 1);
    m_right->setObjectName(u"rightHost"_s);
    makeBar(*m_right, Qt::LeftEdge);
    m_kept->hide();
    m_right->hide();
    row->addWidget(m_right);
    m_pages->addWidget(m_blank);
}

void HostArea::setSideBar(QWidget& sideBar) {
    static_cast<QHBoxLayout*>(layout())->insertWidget(0, &sideBar);
}

void HostArea::addStrip(QWidget& strip) { m_middle->insertWidget(m_middle->count() - 1, &strip); }

QScrollArea* HostArea::pageOf(const QWidget& form) const {
    for (int i = 0; i < m_pages->count(); ++i)
        if (auto* page = qobject_cast<QScrollArea*>(m_pages->widget(i)); page && page->widget() == &form)
            return page;
    return nullptr;
}

QScrollArea* HostArea::makePage(QWidget& form) {
    auto* page = new Page(m_pages);
    page->setObjectName(u"hostPage"_s);
    host(*page, form);
    m_pages->addWidget(page);
    return page;
}

// A page lays its window out, which a window that nobody has asked for yet can do without.
void HostArea::keep(QWidget& form) {
    if (!pageOf(form))
        form.setParent(m_kept);
}

void HostArea::showInMiddle(QWidget* form) {
    QWidget* page = m_blank;
    if (form) {
        page = pageOf(*form);
        if (!page)
            page = makePage(*form);
    }
    if (m_pages->currentWidget() != page)
        m_pages->setCurrentWidget(page);
}

void HostArea::setCompanion(QWidget& widget) { m_room->setCompanion(widget); }

void HostArea::showCompanion(Companion place) { m_room->place(place); }

std::vector<QWidget*> HostArea::areas() const {
    std::vector<QWidget*> result;
    if (QLayoutItem* sideBar = layout()->itemAt(0); sideBar->widget())
        result.push_back(sideBar->widget());
    for (int i = 0; i + 1 < m_middle->count(); ++i)
        result.push_back(m_middle->itemAt(i)->widget());
    result.push_back(m_pages->currentWidget());
    if (QWidget* companion = m_room->companion())
        result.push_back(companion);
    result.push_back(m_right);
    return result;
}

void HostArea::showAtRight(QWidget* form) {
    if (form && m_right->widget() != form)
        host(*m_right, *form);
    m_right->setVisible(form != nullptr);
}

}  // namespace platform
