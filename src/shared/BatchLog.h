// The log as the mixer screen sees it: it takes a finished mix.
#pragma once

#include "platform/xml/XmlDocument.h"

namespace sorvanto {

class BatchLog {
public:
    virtual ~BatchLog() = default;
    /// Asks for the initials, writes the log entry and shows it. True when an entry was written.
    virtual bool addLog(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) = 0;
    /// Whether an entry with that lot exists already.
    virtual bool isLogged(const QString& lot) = 0;
};

}  // namespace sorvanto
