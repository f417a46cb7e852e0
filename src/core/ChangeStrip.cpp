#include "core/ChangeStrip.h"

#include "core/CardParts.h"
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

QString doneByProgram(const RecordChange& change) {
    if (change.ofIngredient)
        return translated(u"%2 was changed by another program at %1"_s);
    return change.deleted ? translated(u"Deleted by another program at %1"_s)
                          : translated(u"Changed by another program at %1"_s);
}

QString doneAtBench(const RecordChange& change) {
    if (change.ofIngredient)
        return translated(u"%3 was changed at %1 at %2"_s);
    return change.deleted ? translated(u"Deleted at %1 at %2"_s) : translated(u"Changed at %1 at %2"_s);
}

QString whatHappened(const RecordChange& change) {
    const QString when = momentText(change.last);
    if (change.bench.isEmpty())
        return doneByProgram(change).replace(u"%1"_s, when).replace(u"%2"_s, change.name);
    return doneAtBench(change)
        .replace(u"%2"_s, when)
        .replace(u"%1"_s, change.bench)
        .replace(u"%3"_s, change.name);
}

}  // namespace

ChangeStrip::ChangeStrip(QWidget* parent)
    : QFrame(parent), m_picture(new QLabel(this)), m_text(new QLabel(this)), m_show(new QPushButton(this)),
      m_close(new QToolButton(this)) {
    setObjectName(u"changeStrip"_s);
    m_text->setObjectName(u"lblChange"_s);
    m_show->setObjectName(u"cmdShowChange"_s);
    m_close->setObjectName(u"cmdCloseChange"_s);
    layOutCard(*this, {m_picture, m_text, m_close})->insertWidget(afterText, m_show);
    connect(m_show, &QPushButton::clicked, this, &ChangeStrip::shown);
    connect(m_close, &QToolButton::clicked, this, &ChangeStrip::putAside);
}

void ChangeStrip::setChange(const RecordChange* change, bool editing) {
    if (!change)
        return hide();
    QString text = whatHappened(*change) + u'.';
    if (editing && !change->deleted && !change->ofIngredient)
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
    nameClose(*m_close);
    platform::setSpokenName(*this, text);
    show();
    if (isNew)
        platform::sayAloud(*this);
}

}  // namespace sorvanto
