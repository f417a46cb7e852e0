// The failure of a span that sees one moment (see Transaction): what it was about to change has been changed by another
// connection since that moment. Nothing of the span can be kept; begun anew, it sees what is there now.
#pragma once

#include "platform/basic/RuntimeError.h"

namespace platform {

class Overtaken : public RuntimeError {
public:
    using RuntimeError::RuntimeError;
};

}  // namespace platform
