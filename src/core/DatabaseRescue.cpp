#include "core/DatabaseRescue.h"

#include "config/clsOptions.h"
#include "core/BorrowedLanguage.h"
#include "core/GoodCopy.h"
#include "db/DatabaseFile.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DatabaseState.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::DatabaseState;

const QString again = u"cmdAgain"_s;
const QString restore = u"cmdPutBack"_s;
const QString emptyOne = u"cmdEmpty"_s;
const QString sampleOne = u"cmdSample"_s;
const QString otherFile = u"cmdChoose"_s;

QString headingOf(DatabaseState state) {
    switch (state) {
    case DatabaseState::FolderAbsent:
        return translated(u"The folder of the database is not there."_s);
    case DatabaseState::FolderEmpty:
        return translated(u"The folder of the database is empty."_s);
    case DatabaseState::Missing:
        return translated(u"The database is gone."_s);
    case DatabaseState::NotAFile:
        return translated(u"What stands in the place of the database is no file."_s);
    case DatabaseState::Forbidden:
        return translated(u"The database may not be read."_s);
    case DatabaseState::Damaged:
        return translated(u"The database is damaged."_s);
    case DatabaseState::Unreadable:
        return translated(u"The disk or the network does not give the database."_s);
    case DatabaseState::Usable:
    case DatabaseState::Locked:
        break;
    }
    return translated(u"Another program keeps the database locked."_s);
}

QString adviceOf(DatabaseState state) {
    switch (state) {
    case DatabaseState::FolderAbsent:
    case DatabaseState::FolderEmpty:
        return translated(u"If it lies on a network share or a stick, connect that and try again."_s);
    case DatabaseState::Missing:
        return translated(u"If it was moved, put it back or choose its new place."_s);
    case DatabaseState::Forbidden:
        return translated(u"Ask for the right to read and write the file, then try again."_s);
    case DatabaseState::Damaged:
        return translated(u"Nothing has been changed in the file."_s);
    case DatabaseState::Usable:
    case DatabaseState::Locked:
        return translated(u"Close that program, or wait until it is ready, and try again."_s);
    case DatabaseState::NotAFile:
    case DatabaseState::Unreadable:
        break;
    }
    return {};
}

QString momentText(const QDateTime& made) {
    const QString time = made.toString(u"hh:mm"_s);
    if (made.date() == platform::today().date())
        return translated(u"Copy of today %1, checked."_s).replace(u"%1"_s, time);
    const QString day = platform::dateText(QDateTime(made.date(), QTime(0, 0), Qt::UTC));
    return translated(u"Copy of %1, checked."_s).replace(u"%1"_s, day + ' '_L1 + time);
}

QStringList offerOf(const GoodCopy& copy, DatabaseState state) {
    QStringList texts{momentText(copy.made)};
    texts << translated(u"Batches in the copy: %1."_s).replace(u"%1"_s, QString::number(copy.batches));
    if (const auto missing = copy.unknownToIt.size(); missing > 0)
        texts << translated(
                     u"Batches logged since then: %1. They lie in the journal and will be offered again."_s)
                     .replace(u"%1"_s, QString::number(missing));
    texts << translated(u"Changes of records since the copy are not in it."_s);
    if (state == DatabaseState::Damaged)
        texts << translated(u"The damaged file is kept beside it."_s);
    return texts;
}

StartQuestion::Content contentOf(const QString& path, DatabaseState state,
                                 const std::optional<GoodCopy>& copy) {
    StartQuestion::Content content;
    content.title = translated(u"Sorvanto Control Panel"_s);
    content.heading = headingOf(state);
    content.file = path;
    if (const QString advice = adviceOf(state); !advice.isEmpty())
        content.texts << advice;
    if (copy) {
        content.offer = offerOf(*copy, state);
        content.choices.push_back({restore, translated(u"Put it back"_s)});
    } else if (state == DatabaseState::Damaged || state == DatabaseState::Missing) {
        content.texts << translated(u"No good copy of it was found in backups."_s);
    }
    content.choices.push_back({again, translated(u"Try again"_s)});
    content.none = translated(u"Go on without"_s);
    return content;
}

bool isLost(DatabaseState state) {
    return state == DatabaseState::Damaged || state == DatabaseState::Missing;
}

}  // namespace

bool DatabaseRescue::offer(const QString& path) {
    const DatabaseState state = platform::databaseState(path);
    const bool missing = !platform::fileExists(path);
    if (missing && (path.trimmed().isEmpty() || m_declined.contains(path)))
        return false;
    const BorrowedLanguage language(languageOfOptions());
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
        auto& options = platform::deref(basMain::Options);
        options.DBLocation(file);
        options.saveOptions();
    }
    return true;
}

bool DatabaseRescue::offerWayOut(const QString& path, DatabaseState state) {
    const auto copy = isLost(state) ? newestGoodCopy(path) : std::nullopt;
    StartQuestion::Content content = contentOf(path, state, copy);
    while (true) {
        const QString choice = StartQuestion::ask(content);
        if (choice != restore)
            return choice == again;
        try {
            putBack(*copy, path);
            return true;
        } catch (const platform::RuntimeError& failure) {
            content.failure = failure.description();
        }
    }
}

}  // namespace sorvanto
