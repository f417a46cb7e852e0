// Texts that count: all forms of a language in one text, the singular first, a bar between them:
// "%1 page | %1 pages"; in Russian three: "%1 страница | %1 страницы | %1 страниц".
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>

namespace platform {

/// How a language counts, by the Unicode Common Locale Data Repository for whole numbers. The Romance category for
/// whole millions ("un million de pages") has no form of its own here.
enum class PluralRule : std::uint8_t {
    One,        ///< 1, others: English, German, Italian, Portuguese of Portugal, Spanish
    ZeroOrOne,  ///< 0 and 1, others: French
    Slavic,     ///< 1, 21 ...; 2 to 4, 22 ...; others: Russian
};

/// The rule that counted() goes by from now on; One at first.
void setPluralRule(PluralRule rule);

/// Which form a count takes, from 0.
int pluralForm(PluralRule rule, std::int64_t count);

/// The form for the count, with the count at %1 in the system's digits and marks. A text with fewer forms gives
/// its last one. Further places are left to the caller.
QString counted(const QString& forms, std::int64_t count);

}  // namespace platform
