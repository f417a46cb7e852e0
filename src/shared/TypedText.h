// What the user has typed into the screen on show and neither saved nor cancelled, as others need to know
// of it: the mixer before it speaks up, the hand-over before it fills the screen anew.
#pragma once

namespace sorvanto {

class TypedText {
public:
    virtual ~TypedText() = default;
    /// Whether the screen on show holds typed text neither saved nor cancelled, an open grid cell included.
    virtual bool hasTypedText() const = 0;
    /// Keeps it as a draft and drops an open cell without committing it.
    virtual void keepTypedText() = 0;
};

}  // namespace sorvanto
