// The user's desk as the mixer control sees it: whether a finished mix may be put before the user now.
#pragma once

namespace sorvanto {

class Desk {
public:
    virtual ~Desk() = default;
    /// Nobody is in the midst of anything: a dialog that opens by itself interrupts nothing.
    virtual bool isFree() const = 0;
    /// A dialog that the user asked for may open: no other stands before it.
    virtual bool canOpenDialog() const = 0;
    /// Keeps typed text as a draft and closes an open cell uncommitted, before a dialog the user asked for.
    virtual void keepTypedText() = 0;
    /// Something waits for the user, who may be looking elsewhere.
    virtual void callAttention() = 0;
};

}  // namespace sorvanto
