// A language store that fails at every text, for the procedures whose only failure is that of a text.
#pragma once

#include "platform/basic/RuntimeError.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <memory>
#include <utility>

namespace support {

/// Stands in the language store's place for its lifetime.
class BrokenTranslator {
public:
    BrokenTranslator() : m_kept(std::exchange(sorvanto::basMain::Language, std::make_shared<Store>())) {}
    ~BrokenTranslator() { sorvanto::basMain::Language = m_kept; }
    BrokenTranslator(const BrokenTranslator&) = delete;
    BrokenTranslator& operator=(const BrokenTranslator&) = delete;

private:
    class Store : public sorvanto::Translator {
        void translate(QString&, QString&) override { throw platform::RuntimeError(5, "no language"); }
        QString known(const QString&) const override { return {}; }
        QString translationPath() override { return {}; }
    };

    std::shared_ptr<sorvanto::Translator> m_kept;
};

}  // namespace support
