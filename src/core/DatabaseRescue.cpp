#include "core/DatabaseRescue.h"

#include "config/clsOptions.h"
#include "core/BorrowedLanguage.h"
#include "core/GoodCopy.h"
#include "db/DatabaseFile.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/data/DataLocation.h"
#include "platform/data/sqlite/DatabaseState.h"
#include "shared/Context.h"
#include "shared/Translator.h"

#include <QFileInfo>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::DatabaseState;

const QString restore = u"cmdPutBack"_s;
const QString emptyOne = u"cmdEmpty"_s;
const QString sampleOne = u"cmdSample"_s;
const QString otherFile = u"cmdChoose"_s;

/// What is said of a database that can't be opened.
struct Case {
    DatabaseState state;
    const char* heading;
    const char* advice;
    bool lost = false;  ///< a copy may take its place
};

const std::array<Case, 8> cases{
    Case{DatabaseState::FolderAbsent, "The folder of the database is not there.",
         "If it lies on a network share or a stick, connect that and try again."},
    Case{DatabaseState::FolderEmpty, "The folder of the database is empty.",
         "If it lies on a network share or a stick, connect that and try again."},
    Case{DatabaseState::Missing, "The database is gone.",
         "If it was moved, put it back or choose its new place.", true},
    Case{DatabaseState::NotAFile, "What stands in the place of the database is no file.", ""},
    Case{DatabaseState::Forbidden, "The database may not be read.",
         "Ask for the right to read and write the file, then try again."},
    Case{DatabaseState::Damaged, "The database is damaged.", "Nothing has been changed in the file.", true},
    Case{DatabaseState::Unreadable, "The disk or the network does not give the database.", ""},
    Case{DatabaseState::Locked, "Another program keeps the database locked.",
         "Close that program, or wait until it is ready, and try again."}};

/// One that can be opened by now was locked a moment ago.
const Case& caseOf(DatabaseState state) {
    const auto found =
        std::find_if(cases.begin(), cases.end(), [&](const Case& each) { return each.state == state; });
    return found == cases.end() ? cases.back() : *found;
}

QStringList offerOf(const GoodCopy& copy, DatabaseState state) {
    QStringList texts{madeText(copy)};
    texts << translated(u"Batches in the copy: %1."_s)
                 .replace(u"%1"_s, platform::systemLocale().toString(copy.batches));
    if (const auto missing = copy.unknownToIt.size(); missing > 0)
        texts << translated(
                     u"Batches logged since then: %1. They lie in the journal and will be offered again."_s)
                     .replace(u"%1"_s, platform::systemLocale().toString(missing));
    texts << translated(u"Changes of records since the copy are not in it."_s);
    if (state == DatabaseState::Damaged)
        texts << translated(u"The damaged file is kept beside it."_s);
    return texts;
}

StartQuestion::Content contentOf(const QString& path, DatabaseState state,
                                 const std::optional<GoodCopy>& copy) {
    StartQuestion::Content content;
    content.title = translated(u"Sorvanto Control Panel"_s);
    const Case& found = caseOf(state);
    content.heading = translated(QString::fromLatin1(found.heading));
    content.file = path;
    if (const QString advice = QString::fromLatin1(found.advice); !advice.isEmpty())
        content.texts << translated(advice);
    if (copy) {
        content.offer = offerOf(*copy, state);
        content.choices.push_back({restore, translated(u"Put it back"_s)});
    } else if (found.lost) {
        content.texts << translated(u"No good copy of it was found in backups."_s);
    }
    content.choices.push_back({rescueAgain, translated(u"Try again"_s)});
    content.none = translated(u"Go on without"_s);
    return content;
}

/// The database is back all the same, so this is no failure to be tried again.
void tellNotOpened(const QString& path, const QStringList& lots) {
    if (lots.isEmpty())
        return;
    StartQuestion::Content content;
    content.title = translated(u"Sorvanto Control Panel"_s);
    content.heading = translated(u"The database is back."_s);
    content.file = path;
    content.texts << translated(u"These batches logged since the copy could not be opened again: %1"_s)
                         .replace(u"%1"_s, lots.join(u"; "_s));
    content.none = translated(u"OK"_s);
    StartQuestion::ask(content);
}

}  // namespace

bool DatabaseRescue::offer(const QString& path) {
    if (platform::DataLocation::namesServer(path))
        return offerServer(path);
    const DatabaseState state = platform::databaseState(path);
    const bool missing = !platform::fileExists(path);
    if (missing && (path.trimmed().isEmpty() || m_declined.contains(path)))
        return false;
    const BorrowedLanguage language(m_context, languageOfOptions(m_context));
    const bool way = m_firstStart && missing ? offerNewDatabase(path) : offerWayOut(path, state);
    if (missing && !way)
        m_declined << path;
    return way;
}

bool DatabaseRescue::offerNewDatabase(const QString& path) {
    StartQuestion::Content content;
    content.title = translated(u"Sorvanto Control Panel"_s);
    content.heading = translated(u"There is no database yet."_s);
    content.file = path;
    content.texts << translated(u"The records of the pharmacy lie in one file. What shall it be?"_s);
    content.warning = false;
    content.choices = {{emptyOne, translated(u"Empty database here"_s)},
                       {sampleOne, translated(u"With sample records"_s)},
                       {otherFile, translated(u"Choose a file..."_s)}};
    content.none = translated(u"Not now"_s);
    while (true) {
        const QString choice = StartQuestion::ask(content);
        if (choice.isEmpty())
            return false;
        try {
            if (makeOrChoose(choice, path))
                return true;
        } catch (const platform::RuntimeError& failure) {
            content.failure = failure.description();
        }
    }
}

bool DatabaseRescue::makeOrChoose(const QString& choice, const QString& path) {
    if (choice == emptyOne) {
        createDatabase(path);
    } else if (choice == sampleOne) {
        createSample(path);
    } else {
        const QString file = platform::asker().openFile(translated(u"Choose a file..."_s), QString());
        if (file.isEmpty())
            return false;
        auto& options = platform::deref(m_context.options);
        options.DBLocation(file);
        options.saveOptions();
    }
    return true;
}

bool DatabaseRescue::offerWayOut(const QString& path, DatabaseState state) {
    const auto copy = caseOf(state).lost ? newestGoodCopy(path) : std::nullopt;
    StartQuestion::Content content = contentOf(path, state, copy);
    while (true) {
        const QString choice = StartQuestion::ask(content);
        if (choice != restore)
            return choice == rescueAgain;
        try {
            tellNotOpened(path, putBack(*copy, path).notOpened);
            return true;
        } catch (const platform::RuntimeError& failure) {
            content.failure = failure.description();
        }
    }
}

}  // namespace sorvanto
