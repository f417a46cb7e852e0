// The dialogs are worked by their controls, so that what they do with an answer stays theirs.
#include "report/Answers.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "reports/frmReportDate.h"
#include "reports/frmSelPrint.h"

#include <QDateTimeEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

template <class Control>
Control& control(QObject& window, const QString& name) {
    auto* found = window.findChild<Control*>(name);
    if (!found)
        throw platform::RuntimeError(platform::error::itemNotFound,
                                     u"%1 has no %2"_s.arg(window.objectName(), name));
    return *found;
}

}  // namespace

platform::Answer Answers::messageBox(const QString& prompt, platform::BoxStyle style, const QString&) {
    m_said << prompt;
    return style.buttons == platform::Buttons::Ok ? platform::Answer::Ok : platform::Answer::No;
}

void Answers::showModal(QObject& window, const std::function<void()>&) {
    if (qobject_cast<frmReportDate*>(&window)) {
        control<QDateTimeEdit>(window, u"dtBegin"_s).setDateTime(m_order.begin);
        control<QDateTimeEdit>(window, u"dtEnd"_s).setDateTime(m_order.end);
        control<QPushButton>(window, u"cmdOK"_s).click();
    } else if (qobject_cast<frmSelPrint*>(&window)) {
        auto& labels = control<platform::NumberBox>(window, u"txtLabels"_s);
        labels.setText(QString::number(m_order.labels));
        emit labels.valueEdited();  // which only typing does by itself
        control<QPushButton>(window, u"cmdPosition_%1"_s.arg(m_order.position)).click();
    }
}

}  // namespace sorvanto
