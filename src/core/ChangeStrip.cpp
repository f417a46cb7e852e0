#include "core/ChangeStrip.h"

#include "core/MomentText.h"
#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"
#include "shared/RecordChange.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int stripPictureSize = 20;

QString whatHappened(const RecordChange& change) {
    const QString when = momentText(change.last);
    if (change.bench.isEmpty())
        return (change.deleted ? translated(u"Deleted by another program at %1"_s)
                               : translated(u"Changed by another program at %1"_s))
            .replace(u"%1"_s, when);
    return (change.deleted ? translated(u"Deleted at %1 at %2"_s) : translated(u"Changed at %1 at %2"_s))
        .replace(u"%2"_s, when)
        .replace(u"%1"_s, change.bench);
}

}  // namespace

ChangeStrip::ChangeStrip(QWidget* parent)
    : QFrame(parent), m_picture(new QLabel(this)), m_text(new QLabel(this)), m_show(new QPushButton(this)),
      m_close(new QToolButton(this)) {
    setObjectName(u"changeStrip"_s);
    m_text->setObjectName(u"lblChange"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_show->setObjectName(u"cmdShowChange"_s);
    m_close->setObjectName(u"cmdCloseChange"_s);
    m_close->setIcon(platform::icon(u"close"_s));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2 * platform::grid, platform::grid / 2, platform::grid, platform::grid / 2);
    row->setSpacing(platform::grid);
    row->addWidget(m_picture);
    row->addWidget(m_text, 1);
    row->addWidget(m_show);
    row->addWidget(m_close);
    platform::makeBar(*this, Qt::BottomEdge);
    connect(m_show, &QPushButton::clicked, this, &ChangeStrip::shown);
    connect(m_close, &QToolButton::clicked, this, &ChangeStrip::putAside);
    hide();
}

void ChangeStrip::setChange(const RecordChange* change, bool editing) {
    if (!change)
        return hide();
    QString text = whatHappened(*change) + u'.';
    if (editing && !change->deleted)
        text += u' ' + translated(u"What you save replaces it."_s);
    const bool isNew = isHidden() || text != m_text->text();
    const platform::Theme& colors = platform::theme();
    const bool quiet = !editing && !change->deleted;
    m_picture->setPixmap(
        platform::icon(quiet ? u"info"_s : u"warning"_s, quiet ? colors.good : colors.warning)
            .pixmap(stripPictureSize, stripPictureSize));
    m_text->setText(text);
    m_show->setText(translated(u"Show"_s));
    m_show->setToolTip(translated(u"Shows what was changed"_s));
    m_close->setToolTip(translated(u"Close"_s));
    m_close->setAccessibleName(m_close->toolTip());
    platform::setSpokenName(*this, text);
    show();
    if (isNew)
        platform::sayAloud(*this);
}

}  // namespace sorvanto
