// The notice line and its list.
#include "platform/report/PreviewNotices.h"

#include "platform/basic/Plurals.h"
#include "platform/report/ReportHooks.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

PreviewNotices::PreviewNotices(QWidget* parent) : QFrame(parent) {
    setObjectName(u"notices"_s);
    makeBar(*this, Qt::BottomEdge);
    auto* sign = new QLabel(this);
    sign->setPixmap(icon(u"warning"_s).pixmap(20, 20));
    m_line = new QLabel(this);
    m_line->setObjectName(u"noticeLine"_s);
    setLook(*m_line, "caution");
    m_line->setWordWrap(true);
    m_more = new QPushButton(reportText("Show"), this);
    m_more->setObjectName(u"noticeMore"_s);
    m_more->setCheckable(true);
    m_list = new QListWidget(this);
    m_list->setObjectName(u"noticeList"_s);
    m_list->setAccessibleName(reportText("Warnings"));
    m_list->hide();
    auto* line = new QHBoxLayout;
    line->setSpacing(grid);
    line->addWidget(sign);
    line->addWidget(m_line, 1);
    line->addWidget(m_more);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(2 * grid, grid, 2 * grid, grid);
    all->addLayout(line);
    all->addWidget(m_list);
    hide();
    connect(m_more, &QPushButton::toggled, this, [this](bool on) {
        m_list->setVisible(on);
        m_more->setText(reportText(on ? "Hide" : "Show"));
    });
    connect(m_list, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { emit pageChosen(item->data(Qt::UserRole).toInt()); });
    connect(m_list, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { emit pageChosen(item->data(Qt::UserRole).toInt()); });
}

QString PreviewNotices::sentence(const PageWarning& warning) {
    const QString text = QString(warning.text).simplified();
    const QString field = warning.title.isEmpty() ? warning.control : widgetText(warning.title);
    QString shown;
    switch (warning.kind) {
    case WarningKind::TextCut:
        shown = reportText("Page %1: too long for its place and cut: \"%2\"").arg(warning.page).arg(text);
        break;
    case WarningKind::NoBarCode:
        shown = reportText("Page %1: can not be written as a bar code: \"%2\"").arg(warning.page).arg(text);
        break;
    case WarningKind::ValueHidden:
        shown = reportText("Page %1: no room even in small type, printed as ####: \"%2\"")
                    .arg(warning.page)
                    .arg(text);
        break;
    case WarningKind::LabelLeftOut:
        shown = reportText("The label is not printed: \"%1\" has no room for \"%2\".").arg(field, text);
        break;
    }
    if (warning.count > 1)
        shown += u"  "_s + counted(reportText("(%1 time) | (%1 times)"), warning.count);
    return shown;
}

void PreviewNotices::update(const PageDocument& document, const QString& ending) {
    const int count = document.warningCount();
    if (count == m_known && ending == m_ending && document.notes == m_notes)
        return;
    m_known = count;
    m_notes = document.notes;
    for (std::size_t i = 0; i < document.warnings.size(); ++i) {
        const PageWarning& warning = document.warnings[i];
        const QString text = sentence(warning);
        const int row = static_cast<int>(i);
        QListWidgetItem* item = row < m_list->count() ? m_list->item(row) : new QListWidgetItem(m_list);
        if (item->text() == text)
            continue;
        item->setText(text);
        item->setToolTip(text);
        item->setData(Qt::UserRole, warning.page - 1);
    }
    m_ending = ending;
    QStringList parts;
    if (!ending.isEmpty())
        parts << ending;
    parts << m_notes;
    if (document.warnings.size() == 1)
        parts << sentence(document.warnings.front());
    else
        parts << counts(document);
    parts.removeAll({});
    m_line->setText(parts.join(u"  "_s));
    m_more->setVisible(m_list->count() > 1);
    m_list->setFixedHeight(std::min(5, m_list->count()) * (4 * grid) + grid);
    setVisible(!parts.isEmpty());
}

QString PreviewNotices::counts(const PageDocument& document) {
    QStringList parts;
    if (document.leftOutLabels > 0)
        parts << reportText("Labels not printed: %1.").arg(document.leftOutLabels);
    if (document.hiddenValues > 0)
        parts << reportText("Values printed as ####: %1.").arg(document.hiddenValues);
    if (document.cutTexts > 0)
        parts << reportText("Texts too long for their place and cut: %1.").arg(document.cutTexts);
    if (document.missingBarCodes > 0)
        parts << reportText("Bar codes left out: %1.").arg(document.missingBarCodes);
    return parts.join(u"  "_s);
}

}  // namespace platform
