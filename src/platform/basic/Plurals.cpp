// The choice of a form.
#include "platform/basic/Plurals.h"

#include "platform/basic/SystemLocale.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
PluralRule currentRule = PluralRule::One;
}

void setPluralRule(PluralRule rule) { currentRule = rule; }

int pluralForm(PluralRule rule, std::int64_t count) {
    const std::int64_t i = count < 0 ? -count : count;
    switch (rule) {
    case PluralRule::One:
        return i == 1 ? 0 : 1;
    case PluralRule::ZeroOrOne:
        return i <= 1 ? 0 : 1;
    case PluralRule::Slavic: {
        const std::int64_t last = i % 10, two = i % 100;
        if (last == 1 && two != 11)
            return 0;
        return last >= 2 && last <= 4 && (two < 12 || two > 14) ? 1 : 2;
    }
    }
    return 0;
}

QString counted(const QString& forms, std::int64_t count) {
    const QStringList all = forms.split(u" | "_s);
    const auto form = qMin(qsizetype{pluralForm(currentRule, count)}, all.size() - 1);
    return QString(all[form]).replace(u"%1"_s, systemLocale().toString(qint64{count}));
}

}  // namespace platform
