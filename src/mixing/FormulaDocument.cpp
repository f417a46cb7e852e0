#include "mixing/FormulaDocument.h"

#include "platform/basic/Numbers.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

std::int16_t formulaDocumentID(const platform::XmlDocumentPtr& document) {
    if (!document)
        return 0;
    const platform::XmlNode id = document->selectSingleNode(u"//Formula/ID"_s);
    return id ? platform::toInt16(id.text()) : 0;
}

std::int16_t formulaDocumentNumber(const platform::XmlDocument& document, const QString& node) {
    return platform::toInt16(platform::nodeText(document, u"//Formula/"_s + node));
}

}  // namespace sorvanto
