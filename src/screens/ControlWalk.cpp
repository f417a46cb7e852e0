#include "screens/ControlWalk.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

void setReadOnly(QWidget& control, bool on) {
    if (auto* box = dynamic_cast<platform::Lockable*>(&control))
        box->setReadOnlyBox(on);
}

}  // namespace

void lockControls(QWidget& form, LockRules rules, bool locked) {
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const QString name = control->objectName();
        if (name.contains(u"txt"_s) || name.contains(u"cbo"_s)) {
            setReadOnly(*control, locked);
        } else if (rules.grids && name.contains(u"grd"_s)) {
            if (auto* grid = qobject_cast<platform::RecordGrid*>(control))
                grid->setAllowUpdate(!locked);
        } else if ((rules.upDowns && name.contains(u"upd"_s)) || (rules.buttons && name.contains(u"cmd"_s))) {
            control->setEnabled(!locked);
        }
    }
}

void setControlText(QWidget& control, const QString& text) {
    if (auto* box = qobject_cast<platform::NumberBox*>(&control))
        box->setText(text);
    else if (auto* line = qobject_cast<platform::TextBox*>(&control))
        line->setText(text);
    else if (auto* memo = qobject_cast<platform::MemoBox*>(&control))
        memo->setText(text);
    else if (auto* date = qobject_cast<platform::DateBox*>(&control))
        text.isEmpty() ? date->clear() : date->setValue(platform::toDate(text));
}

void clearControls(QWidget& form) {
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const QString name = control->objectName();
        auto* choice = qobject_cast<platform::ChoiceBox*>(control);
        if (name.contains(u"txt"_s))
            setControlText(*control, QString());
        else if (choice && name.contains(u"cbochm_Units"_s))
            choice->setBoxText(u"Select Units"_s);
        else if (choice && name.contains(u"cbochm_Form"_s))
            choice->setBoxText(u"Select Form"_s);
    }
}

}  // namespace sorvanto
