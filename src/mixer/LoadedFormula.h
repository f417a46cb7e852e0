// A formula document as the mixer needs it: read, tested, turned into a programme.
#pragma once

#include "mixer/PanelTexts.h"
#include "mixer/protocol/Messages.h"
#include "platform/xml/XmlDocument.h"

#include <variant>
#include <vector>

namespace sorvanto {

struct LoadedFormula {
    platform::XmlDocumentPtr document;  ///< own copy, as it was given
    QString name;
    int quantity = 0;
    int jar = 0;
    protocol::Programme programme;  ///< still without id
    /// Steps faster than the jar recommends; they may run all the same.
    std::vector<PanelMessage> warnings;
};

/// The programme of the document, or why the mixer can't run it. With overrideSpeed no speed is warned of.
std::variant<LoadedFormula, PanelMessage> readFormula(const platform::XmlDocumentPtr& document,
                                                      bool overrideSpeed);

/// What the panel shows of any formula document, also of one that can't be run.
QString formulaName(const platform::XmlDocumentPtr& document);
QString formulaQuantity(const platform::XmlDocumentPtr& document);
/// Key of the stored formula; 0 when there is none.
int formulaKey(const platform::XmlDocumentPtr& document);
/// Name of the jar; "" when it has none.
QString formulaJar(const platform::XmlDocumentPtr& document);

}  // namespace sorvanto
