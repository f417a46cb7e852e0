// One translator for Qt's catalogue, exchanged as a whole.
#include "platform/widgets/SystemTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

std::optional<QLocale>& chosen() {
    static std::optional<QLocale> language;
    return language;
}

/// Owned here and not by the application: taking a translator off the application needs it alive.
std::unique_ptr<QTranslator>& installed() {
    static std::unique_ptr<QTranslator> translator;
    return translator;
}

}  // namespace

void setSystemLanguage(const QLocale& language, const QString& folder) {
    chosen() = language;
    installed().reset();  // a translator takes itself off the application
    if (language.language() == QLocale::English)
        return;
    auto translator = std::make_unique<QTranslator>();
    const QString place = folder.isEmpty() ? QLibraryInfo::path(QLibraryInfo::TranslationsPath) : folder;
    if (!translator->load(language, u"qtbase"_s, u"_"_s, place))
        return;
    QCoreApplication::installTranslator(translator.get());
    installed() = std::move(translator);
}

QLocale systemLanguage() { return chosen().value_or(QLocale()); }

}  // namespace platform
