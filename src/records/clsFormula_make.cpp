// Scaling a formula to a batch, and the document that the mixer is given.
#include "records/clsFormula.h"

#include "platform/basic/Format.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "shared/Guard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

/// A product of field values; NULL when the field is.
QVariant product(const QVariant& value, double factor) {
    return value.isValid() ? QVariant(toDouble(value) * factor) : QVariant();
}

/// The digit 0 in front turns NULL into 0; a negative number behind it is no number and stays as it is.
QString scaledText(const QVariant& value, const QString& picture) { return format(zeroText(value), picture); }

/// The line's quantity for the batch, and its prices from prices of one unit to those of the line.
void scaleLine(Recordset& line, double factor) {
    line.setValue(u"fch_QTY"_s, scaledText(product(line.value(u"fch_QTY"_s), factor), u"#0.000"_s));
    for (const QString& price : {u"chm_Cost"_s, u"chm_AWP"_s}) {
        const double quantity = toDouble(line.value(u"fch_Qty"_s));  // already rounded
        line.setValue(price, scaledText(product(line.value(price), quantity), u"#0.00"_s));
    }
}

/// The jar for a quantity, or the present one outside 0 to 1000.
std::int16_t jarFor(std::int16_t quantity, std::int16_t present) {
    struct Jar {
        std::int16_t largest, code;
    };
    static constexpr Jar jars[] = {{15, 1},  {20, 2},  {30, 3},  {50, 4},  {100, 5},
                                   {200, 6}, {300, 7}, {500, 8}, {1000, 9}};
    if (quantity >= 0)
        for (const Jar& jar : jars)
            if (quantity <= jar.largest)
                return jar.code;
    return present;
}

}  // namespace

void clsFormula::makeQuantity(std::int16_t quantity) {
    const std::int16_t base = frm_Quantity;
    m_makeQuantity = quantity;
    const double factor = quotient(quantity, base);
    frm_Cost = frm_Cost * factor;
    frm_AWP = frm_AWP * factor;
    Recordset& lines = deref(Chemical);
    if (lines.recordCount() > 0) {
        lines.disconnect();  // from here on nothing reaches the tables
        for (lines.moveFirst(); !lines.eof(); lines.moveNext())
            scaleLine(lines, factor);
    }
    frm_JarSize = jarFor(makeQuantity(), frm_JarSize);
}

XmlDocumentPtr clsFormula::getFormulaXML() {
    return guarded(u"clsFormula:getFormulaXML"_s, XmlDocumentPtr(), [&] {
        const XmlDocumentPtr document = XmlDocument::create();
        document->appendElement(u"Formula"_s);
        XmlNode parent = document->getElementsByTagName(u"Formula"_s).at(0);
        const auto add = [&](const QString& name, const QString& text) {
            parent.appendElement(name).setText(text);
        };
        add(u"ID"_s, QString::number(FormulaID));
        add(u"Name"_s, frm_Name);
        add(u"Type"_s, QString::number(frm_FormType));
        add(u"Size"_s, QString::number(frm_JarSize));
        add(u"QTY"_s, QString::number(frm_Quantity));
        add(u"Make"_s, QString::number(makeQuantity()));
        parent.appendCopy(deref(frm_Mix).cloneDeep()->selectSingleNode(u"CustomMix"_s));
        return document;
    });
}

}  // namespace sorvanto
