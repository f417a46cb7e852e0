#include "core/BorrowedLanguage.h"

#include "config/clsLanguage.h"
#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Texts.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {

BorrowedLanguage::BorrowedLanguage(std::int16_t language) {
    if (basMain::Language)
        return;
    const auto borrowed = std::make_shared<clsLanguage>();
    borrowed->readLanguage(language);
    basMain::Language = borrowed;
    platform::setTextTranslator(translated);
    m_borrowed = true;
}

BorrowedLanguage::~BorrowedLanguage() {
    if (m_borrowed)
        basMain::Language.reset();
}

std::int16_t languageOfOptions() {
    try {
        return platform::deref(basMain::Options).Language();
    } catch (const platform::RuntimeError&) {
        return 0;
    }
}

}  // namespace sorvanto
