// The user's language for a window that comes before the program's own language object: for its scope the texts
// are those of the language that the options name.
#pragma once

#include <cstdint>

namespace sorvanto {

struct Context;

class BorrowedLanguage {
public:
    /// Does nothing when the program has its language already. A language file that is missing or can't be read
    /// leaves English; none is made.
    BorrowedLanguage(Context& context, std::int16_t language);
    ~BorrowedLanguage();
    BorrowedLanguage(const BorrowedLanguage&) = delete;
    BorrowedLanguage& operator=(const BorrowedLanguage&) = delete;

private:
    Context& m_context;
    bool m_borrowed = false;
};

/// The number that the options name; 0, English, where they can't tell.
std::int16_t languageOfOptions(const Context& context);

}  // namespace sorvanto
