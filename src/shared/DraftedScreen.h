// A screen whose typed text is kept as drafts, and brought back from them.
#pragma once

#include "shared/Draft.h"
#include "shared/TypedText.h"

#include <functional>

namespace sorvanto {

class DraftStore;

/// Whether a draft still fits the record that it was typed for.
enum class DraftFit {
    Fits,
    Deleted,        ///< the record is gone
    OtherDatabase,  ///< another file is open
    Changed,        ///< another record bears the key, or a replaced value is no longer the one on view
    OnlyReadable,   ///< a cell of a grid
    Failed,         ///< the record can't be read; reported
};

class DraftedScreen : public TypedText {
public:
    /// From now on typed text goes into the store; it must outlive the screen. typedChanged is called when
    /// hasTypedText may have changed.
    virtual void keepDraftsIn(DraftStore& store, std::function<void()> typedChanged) = 0;
    virtual QString draftTable() const = 0;
    /// Fits, or what is known to stand in the way before the record is opened.
    virtual DraftFit fitOf(const Draft& draft) = 0;
    /// Opens the record, unlocks it and types the draft's texts into their boxes, unsaved. Where it does not
    /// fit, the record that is there is on view and nothing is typed.
    virtual DraftFit bringBack(const Draft& draft) = 0;
};

}  // namespace sorvanto
