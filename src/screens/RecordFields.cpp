// A box is asked by its class: text, number, date or choice.
#include "screens/RecordFields.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "reports/ReportTexts.h"
#include "screens/BoxText.h"
#include "screens/ControlWalk.h"
#include "shared/Translator.h"

#include <QLabel>
#include <QTabWidget>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

template <class Control>
Control& control(const QWidget& form, const char* name) {
    if (auto* found = form.findChild<Control*>(QLatin1String(name)))
        return *found;
    throw platform::RuntimeError(platform::error::itemNotFound, u"The form %1 has no control \"%2\""_s.arg(
                                                                    form.objectName(), QLatin1String(name)));
}

template <class Box>
Box& as(QWidget* box) {
    return platform::deref(qobject_cast<Box*>(box));
}

template <class... Cases>
struct ByType : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
ByType(Cases...) -> ByType<Cases...>;

bool isText(const QWidget* box) {
    return !qobject_cast<const platform::NumberBox*>(box) && !qobject_cast<const platform::DateBox*>(box);
}

bool isAcceptable(QWidget* box) {
    if (auto* number = qobject_cast<platform::NumberBox*>(box))
        return number->acceptable();
    auto* date = qobject_cast<platform::DateBox*>(box);
    return !date || date->acceptable();
}

/// Turns to the tab that the box stands on.
void bringUp(QWidget& box) {
    for (QWidget* around = box.parentWidget(); around; around = around->parentWidget()) {
        auto* tabs = qobject_cast<QTabWidget*>(around);
        for (int tab = 0; tabs && tab < tabs->count(); ++tab) {
            if (tabs->widget(tab)->isAncestorOf(&box))
                tabs->setCurrentIndex(tab);
        }
    }
    box.setFocus();
}

bool isReadable(QWidget* box) {
    if (isAcceptable(box))
        return true;
    bringUp(*box);
    return isAcceptable(box);  // the hint shows on a visible box alone
}

bool isMissing(QWidget* box) {
    if (const auto* number = qobject_cast<platform::NumberBox*>(box))
        return platform::leadingNumber(number->text()) <= 0;
    return boxText(*box).isEmpty();
}

}  // namespace

void FieldBoxes::addLabel(const QWidget& form, const char* label, const char* caption) {
    m_labels.push_back({&control<QLabel>(form, label), caption});
}

void FieldBoxes::addLabels(const QWidget& form,
                           std::initializer_list<std::pair<const char*, const char*>> labels) {
    for (const auto& [label, caption] : labels)
        addLabel(form, label, caption);
}

const FieldBoxes::Field& FieldBoxes::addField(QWidget& form, const char* box, const FieldRule& rule) {
    return m_fields.emplace_back(Field{&control<QWidget>(form, box), rule});
}

void FieldBoxes::translate() const {
    for (const auto& [label, caption] : m_labels) {
        label->setText(translated(QString::fromLatin1(caption)));
        // A box of several parts has its label, the part that takes the keys has not.
        if (QWidget* box = label->buddy(); box && box->focusProxy())
            box->focusProxy()->setAccessibleName(label->text());
    }
}

bool FieldBoxes::readable() const {
    return std::all_of(m_fields.begin(), m_fields.end(),
                       [](const Field& field) { return !isRead(field) || isReadable(field.box); });
}

// Texts are asked for before any number.
bool FieldBoxes::complete() const {
    for (const bool text : {true, false}) {
        for (const Field& field : m_fields) {
            if (isText(field.box) != text)
                continue;
            if (isRead(field) && !isReadable(field.box))
                return false;
            if (field.rule.required && isMissing(field.box)) {
                platform::MsgBox(translated(QString::fromLatin1(field.rule.required)));
                return false;
            }
        }
    }
    return true;
}

void FieldBoxes::show(const Field& field, const FieldValue& value) const {
    QWidget* const box = field.box;
    std::visit(ByType{[&](const QString& text) {
                          if (auto* choice = qobject_cast<platform::ChoiceBox*>(box))
                              choice->setBoxText(text);
                          else
                              setControlText(*box, text);
                      },
                      [&](std::int16_t number) {
                          if (const auto entries = field.rule.entries)
                              setControlText(*box, tableEntry(m_context.*entries, number));
                          else
                              as<platform::NumberBox>(box).setValue(static_cast<double>(number));
                      },
                      [&](platform::Currency money) {
                          const QString picture = optionsPricePicture(m_context);
                          as<platform::NumberBox>(box).setFormats(picture, picture);
                          as<platform::NumberBox>(box).setValue(money);
                      },
                      [&](const QDateTime& date) { as<platform::DateBox>(box).setValue(date); }},
               value);
}

FieldValue FieldBoxes::read(const Field& field, const FieldValue& stored) {
    QWidget* const box = field.box;
    return std::visit(
        ByType{[&](const QString&) -> FieldValue {
                   const QString text = boxText(*box);
                   const char* const prompt = field.rule.prompt;
                   return prompt && text == translated(QString::fromLatin1(prompt)) ? stored : text;
               },
               [&](std::int16_t) -> FieldValue {
                   return platform::toInt16(as<platform::NumberBox>(box).toDouble());
               },
               [&](platform::Currency) -> FieldValue { return as<platform::NumberBox>(box).toCurrency(); },
               [&](const QDateTime&) -> FieldValue { return as<platform::DateBox>(box).value(); }},
        stored);
}

}  // namespace sorvanto
