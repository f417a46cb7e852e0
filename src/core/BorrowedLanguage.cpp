#include "core/BorrowedLanguage.h"

#include "config/clsLanguage.h"
#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Texts.h"
#include "shared/Context.h"
#include "shared/Translator.h"

namespace sorvanto {

BorrowedLanguage::BorrowedLanguage(Context& context, std::int16_t language) : m_context(context) {
    if (m_context.language)
        return;
    const auto borrowed = std::make_shared<clsLanguage>();
    borrowed->readLanguage(language);
    m_context.language = borrowed;
    platform::setTextTranslator(translated);
    m_borrowed = true;
}

BorrowedLanguage::~BorrowedLanguage() {
    if (m_borrowed)
        m_context.language.reset();
}

std::int16_t languageOfOptions(const Context& context) {
    try {
        return platform::deref(context.options).Language();
    } catch (const platform::RuntimeError&) {
        return 0;
    }
}

}  // namespace sorvanto
