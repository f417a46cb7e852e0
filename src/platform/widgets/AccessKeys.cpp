#include "platform/widgets/AccessKeys.h"

#include <QPushButton>

namespace platform {

namespace {

/// The letter behind a "&" that is not there to show one; null without.
QChar keyOf(const QString& caption) {
    for (qsizetype at = 0; at + 1 < caption.size(); ++at) {
        if (caption[at] != u'&')
            continue;
        if (caption[at + 1] != u'&')
            return caption[at + 1].toUpper();
        ++at;
    }
    return {};
}

}  // namespace

QString withAccessKey(const QString& caption, QString& taken) {
    for (qsizetype at = 0; at < caption.size(); ++at) {
        const QChar letter = caption[at].toUpper();
        if (!letter.isLetter() || taken.contains(letter))
            continue;
        taken += letter;
        return QString(caption).insert(at, u'&');
    }
    return caption;
}

void giveAccessKeys(const QWidget& window) {
    const auto buttons = window.findChildren<QPushButton*>(Qt::FindDirectChildrenOnly);
    QString taken;
    for (const QPushButton* button : buttons) {
        if (const QChar key = keyOf(button->text()); !key.isNull())
            taken += key;
    }
    for (QPushButton* button : buttons) {
        if (keyOf(button->text()).isNull())
            button->setText(withAccessKey(button->text(), taken));
    }
}

}  // namespace platform
