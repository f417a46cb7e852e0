#include "screens/ControlWalk.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"

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
        if (name.contains("txt") || name.contains("cbo")) {
            setReadOnly(*control, locked);
        } else if (rules.grids && name.contains("grd")) {
            if (auto* grid = qobject_cast<platform::RecordGrid*>(control))
                grid->setAllowUpdate(!locked);
        } else if ((rules.upDowns && name.contains("upd")) || (rules.buttons && name.contains("cmd"))) {
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
        if (name.contains("txt"))
            setControlText(*control, QString());
        else if (choice && name.contains("cbochm_Units"))
            choice->setBoxText("Select Units");
        else if (choice && name.contains("cbochm_Form"))
            choice->setBoxText("Select Form");
    }
}

}  // namespace sorvanto
