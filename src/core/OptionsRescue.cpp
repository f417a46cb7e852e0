#include "core/OptionsRescue.h"

#include "config/LastGoodOptions.h"
#include "config/clsOptions.h"
#include "core/BorrowedLanguage.h"
#include "core/StartQuestion.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString lastGood = u"cmdLastGood"_s;
const QString anew = u"cmdNew"_s;

QString optionsFile() { return platform::platformPath(platform::programFolder() + u"/options.xml"_s); }

void addLastGood(StartQuestion::Content& content, const QDateTime& kept) {
    content.offer << translated(u"The last options that could be read are of %1."_s)
                         .replace(u"%1"_s, platform::dateText(kept));
    content.choices.push_back({lastGood, translated(u"Use these"_s)});
}

StartQuestion::Content contentFor(const clsOptions& options, const QDateTime& kept) {
    StartQuestion::Content content;
    content.title = translated(u"Sorvanto Control Panel"_s);
    content.heading = translated(u"The options could not be read."_s);
    content.file = optionsFile();
    content.texts << translated(u"The file is damaged, or it is another file."_s)
                  << translated(u"Whatever you choose, the broken file is kept."_s);
    content.detail = options.problem();
    if (kept.isValid())
        addLastGood(content, kept);
    content.choices.push_back({anew, translated(u"New options"_s)});
    content.none = translated(u"Go on without"_s);
    return content;
}

}  // namespace

void bringOptionsBack(Context& context) {
    const QDateTime kept = lastGoodOptions::kept();
    if (!kept.isValid() || platform::fileExists(optionsFile()))
        return;
    const BorrowedLanguage language(context, lastGoodOptions::language());
    StartQuestion::Content content;
    content.title = translated(u"Sorvanto Control Panel"_s);
    content.heading = translated(u"The options are gone."_s);
    content.file = optionsFile();
    addLastGood(content, kept);
    content.none = translated(u"New options"_s);
    while (StartQuestion::ask(content) == lastGood) {
        try {
            return lastGoodOptions::putBack(optionsFile());
        } catch (const platform::RuntimeError& failure) {
            content.failure = failure.description();
        }
    }
}

void offerOptions(Context& context, clsOptions& options) {
    if (options.problem().isEmpty())
        return;
    const QDateTime kept = lastGoodOptions::kept();
    QString choice;
    {
        const BorrowedLanguage language(context, lastGoodOptions::language());
        choice = StartQuestion::ask(contentFor(options, kept));
    }
    if (choice == lastGood)
        options.takeLastGood();
    else if (choice == anew)
        options.startAnew();
}

}  // namespace sorvanto
