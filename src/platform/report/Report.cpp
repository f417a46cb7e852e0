// Controls by name, binding of fields to columns, and the dispatch of format events.
#include "platform/report/Report.h"

#include "platform/report/Strength.h"

#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

bool isNumber(const QVariant& value) {
    return value.isValid() && value.userType() != QMetaType::QString &&
           value.userType() != QMetaType::QDateTime && value.userType() != QMetaType::Bool;
}

/// The marks of a currency in front of the digits ("Fr.") are none of the number's.
QString withSystemMarks(const QString& formatted, const QString& picture) {
    const QString currency = textInFront(picture);
    const qsizetype digits = currency.isEmpty() ? 0 : formatted.indexOf(currency) + currency.size();
    return formatted.left(digits) + shownNumber(formatted.mid(digits));
}

}  // namespace

QString shownText(const QVariant& value, const QString& picture) {
    if (value.userType() == QMetaType::QDateTime && !picture.isEmpty())
        return formatDate(value.toDateTime(), picture);
    if (!picture.isEmpty())
        return withSystemMarks(format(value, picture), picture);
    return isNumber(value) ? shownNumber(nullText(value)) : nullText(value);
}

Report::Report(ReportDefinition definition) : m_definition(std::move(definition)) {
    for (Section& section : m_definition.sections) {
        for (Control& control : section.controls) {
            if (control.style.family.isEmpty())
                control.style.family = m_definition.font.family;
            if (control.style.points == 0)
                control.style.points = m_definition.font.points;
            m_byName.insert(control.name, &control);
        }
    }
}

Report::~Report() = default;

void Report::setRows(RecordsetPtr rows) {
    m_rows = std::move(rows);
    for (Control* control : std::as_const(m_byName))
        control->field = Control::unresolved;
}

Control& Report::found(const QString& name) {
    const auto place = m_byName.constFind(name);
    if (place == m_byName.constEnd())
        throw RuntimeError(error::itemNotFound,
                           u"Report %1 has no control %2"_s.arg(m_definition.name, name));
    return **place;
}

const Control& Report::control(const QString& name) const { return const_cast<Report*>(this)->found(name); }

void Report::setText(const QString& name, const QString& text) {
    Control& control = found(name);
    control.text = text;
    control.value.clear();
    control.tail = 0;
}

void Report::setName(const QString& name, const QString& words, const QString& tail, const QString& lead) {
    setText(name, lead + words + tail);
    const TextSpan strength = strengthOf(words);
    const qsizetype kept = strength.isEmpty() ? 0 : words.size() - strength.start;
    Control& control = found(name);
    control.tail = static_cast<int>(kept + tail.size());
    control.lead = static_cast<int>(lead.size());
}

void Report::setValue(const QString& name, const QVariant& value, const QString& picture) {
    setValue(name, value, picture, shownText(value, picture));
}

void Report::setValue(const QString& name, const QVariant& value, const QString& picture,
                      const QString& text) {
    Control& control = found(name);
    control.text = text;
    control.value = value;
    control.format = picture;
}

void Report::setVisible(const QString& name, bool visible) { found(name).visible = visible; }

void Report::setFormat(const QString& name, const QString& picture) { found(name).format = picture; }

void Report::fetchData(bool& eof) { Q_UNUSED(eof) }

void Report::bind(Section& section) {
    if (!m_rows || !m_rows->isOpen() || m_rows->eof() || m_rows->bof())
        return;
    for (Control& control : section.controls) {
        if (control.column.isEmpty())
            continue;
        if (control.field == Control::unresolved)
            control.field = m_rows->hasField(control.column) ? m_rows->fieldIndex(control.column) : -1;
        control.value = control.field >= 0 ? m_rows->value(control.field) : QVariant();
        control.text = control.field >= 0 ? shownText(control.value, control.format) : QString();
    }
}

void Report::raiseFormat(SectionKind kind) {
    switch (kind) {
    case SectionKind::ReportHeader:
        return reportHeaderFormat();
    case SectionKind::PageHeader:
        return pageHeaderFormat();
    case SectionKind::GroupHeader:
        return groupHeaderFormat();
    case SectionKind::Detail:
        return detailFormat();
    case SectionKind::GroupFooter:
        return groupFooterFormat();
    case SectionKind::ReportFooter:
        return reportFooterFormat();
    case SectionKind::PageFooter:
        return pageFooterFormat();
    }
}

Section* Report::section(SectionKind kind) {
    for (Section& section : m_definition.sections) {
        if (section.kind == kind)
            return &section;
    }
    return nullptr;
}

}  // namespace platform
