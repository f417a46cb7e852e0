// Reads the command line of sorvanto-db and does the work.
#include "db/Commands.h"

#include "db/Archive.h"
#include "db/CopyCommand.h"
#include "db/DatabaseFile.h"
#include "db/Forget.h"
#include "db/RecordsCopy.h"
#include "db/ServerUpdate.h"
#include "history/HistoryPause.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Version.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/DataLocation.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrongUse = 2;

const char usage[] =
    "Records of the Sorvanto Control Panel: database files, and servers.\n"
    "\n"
    "  sorvanto-db create FILE             makes an empty database\n"
    "  sorvanto-db sample FILE [--rows N]  makes one with a sample pharmacy; with --rows every\n"
    "                                      table is filled up to N rows (1 to 32767)\n"
    "  sorvanto-db check FILE [ARCHIVE]    tells what is wrong with a database, and with the archive that it\n"
    "                                      goes on from; exit code 1 if anything is\n"
    "  sorvanto-db backup FILE TARGET      copies a database, also one in use, and checks the copy\n"
    "  sorvanto-db copy FROM TO            copies all records with their history, into a new file or an empty\n"
    "                                      server\n"
    "  sorvanto-db restore BACKUP FILE     puts a copy back and keeps what was there before;\n"
    "                                      close the program first\n"
    "  sorvanto-db archive FILE ARCHIVE [--keep MONTHS]\n"
    "                                      puts everything into a new file and keeps the batches of the last\n"
    "                                      months (12 unless told) in FILE, numbered from 1; close the program\n"
    "                                      first, at all benches of a server\n"
    "  sorvanto-db update SERVER STEPS     brings the records on a server up to date by dbupdate.xml; for the\n"
    "                                      account that owns them, with the program closed at all benches\n"
    "  sorvanto-db forget FILE --patient KEY\n"
    "                                      blanks what the history holds of a patient, and unsaved texts;\n"
    "                                      close the program first\n"
    "\n"
    "  sorvanto-db --help | --version\n"
    "\n"
    "create, sample, backup, copy and archive never write over an existing file.\n"
    "In check, sample, backup, copy, archive and forget the address of a server (postgresql://...) can stand for\n"
    "FILE, FROM or TO; sample, archive, forget and a copy into one are its owner's (postgresql://sorvanto_owner@...).\n"
    "Ctrl-C ends copy and archive, and leaves nothing.\n";

bool isServer(const QString& location) { return platform::DataLocation(location).isServer(); }

/// For what a server's records are not made or replaced by.
void refuseServer(const QString& location, const QString& instead) {
    if (isServer(location))
        throw platform::RuntimeError(platform::error::general, instead);
}

int check(const QString& location, const QString& archive, QTextStream& out) {
    refuseServer(archive, u"An archive is a file"_s);
    const QStringList problems = problemsOf(location, archive);
    for (const QString& problem : problems)
        out << problem << '\n';
    if (problems.isEmpty())
        out << location << ": no problems found\n";
    return problems.isEmpty() ? done : failed;
}

int create(const QString& file) {
    refuseServer(file, u"The empty records of a server are made by start-server.sh"_s);
    createDatabase(file);
    return done;
}

int sample(const QString& location, int rows) {
    isServer(location) ? createServerSample(location, rows) : createSample(location, rows);
    return done;
}

int backup(const QString& location, const QString& target) {
    refuseServer(target, u"A backup is a file; into a server go records by: sorvanto-db copy FROM TO"_s);
    if (!isServer(location)) {
        platform::backupDatabase(location, target);
        return done;
    }
    const QString path = platform::platformPath(target);
    if (QFile::exists(path))
        throw platform::RuntimeError(platform::error::permissionDenied, u"\"%1\" exists already"_s.arg(path));
    copyToFile(location, path);
    return done;
}

int restore(const QString& backup, const QString& file, QTextStream& out) {
    refuseServer(file, u"Records are put back into a new server (start-server.sh with another folder), by: "
                       "sorvanto-db copy BACKUP TO"_s);
    const QString aside = platform::restoreDatabase(
        backup, file, [&](const QString& restored) { noteRestored(restored, backup); });
    out << file << ": restored from " << backup << '\n';
    if (!aside.isEmpty())
        out << "What was there before is kept as " << aside << '\n';
    return done;
}

int update(const QString& server, const QString& steps, QTextStream& out) {
    if (!isServer(server))
        throw platform::RuntimeError(platform::error::general,
                                     u"A file is brought up to date by starting the program on it"_s);
    const ServerUpdate result = updateServer(server, steps);
    if (result.from == result.to)
        out << "The records are of version " << result.to << " already.\n";
    else
        out << "The records were brought from version " << result.from << " to " << result.to << ".\n";
    return done;
}

int archive(const QString& file, const QString& target, int months, QTextStream& out,
            const platform::Cancelled& cancelled) {
    platform::Connection connection;
    connection.open(u"Data Source="_s + file);
    const QStringList open = openWork(possibleFolders(file), identityOf(connection.engine()));
    connection.close();
    if (!open.isEmpty())
        throw platform::RuntimeError(platform::error::general,
                                     u"To be closed in the program first: "_s + open.join(u"; "_s));
    const QDate firstKept = platform::today().date().addMonths(-months);
    const ArchiveResult result = archiveDatabase(file, target, firstKept, cancelled);
    out << target << ": everything up to now, checked\n"
        << file << ": " << result.kept << " batches since " << firstKept.toString(Qt::ISODate) << " stay, "
        << result.moved << " older ones and " << result.prescriptions << " prescriptions of them have left\n";
    return done;
}

/// The key of "forget FILE --patient KEY", 0 when it is no such command line.
int wantedPatient(const QStringList& arguments) {
    if (arguments.size() != 4 || arguments.at(2) != "--patient"_L1)
        return 0;
    bool isNumber = false;
    const int key = arguments.at(3).toInt(&isNumber);
    return isNumber && key >= 1 && key <= mostRows ? key : 0;
}

int forget(const QString& file, int patient, QTextStream& out) {
    const ForgetResult result = forgetPatient(file, patient, possibleFolders(file));
    out << file << ": " << result.rows << " changes of patient " << patient << " blanked, " << result.drafts
        << " unsaved texts removed\n"
        << "The record itself, older copies and archives are as they were.\n";
    return done;
}

/// Months of "archive FILE ARCHIVE [--keep MONTHS]", 12 when not given, -1 when it is no such command line.
int wantedMonths(const QStringList& arguments) {
    constexpr int mostMonths = 1200;
    if (arguments.size() == 3)
        return 12;
    if (arguments.size() != 5 || arguments.at(3) != "--keep"_L1)
        return -1;
    bool isNumber = false;
    const int months = arguments.at(4).toInt(&isNumber);
    return isNumber && months >= 1 && months <= mostMonths ? months : -1;
}

/// Rows of "sample FILE [--rows N]", 0 when not given, -1 when it is no such command line.
int wantedRows(const QStringList& arguments) {
    if (arguments.size() == 2)
        return 0;
    if (arguments.size() != 4 || arguments.at(2) != "--rows"_L1)
        return -1;
    bool isNumber = false;
    const int rows = arguments.at(3).toInt(&isNumber);
    return isNumber && rows >= 1 && rows <= mostRows ? rows : -1;
}

int run(const QStringList& arguments, QTextStream& out, QTextStream& err,
        const platform::Cancelled& cancelled) {
    const QString command = arguments.value(0);
    const auto takes = [&](const char* name, int files) {
        return command == QLatin1String(name) && arguments.size() == files + 1;
    };
    if (takes("create", 1))
        return create(arguments.at(1));
    if (command == "sample"_L1 && wantedRows(arguments) >= 0)
        return sample(arguments.at(1), wantedRows(arguments));
    if (takes("check", 1) || takes("check", 2))
        return check(arguments.at(1), arguments.value(2), out);
    if (takes("backup", 2))
        return backup(arguments.at(1), arguments.at(2));
    if (takes("copy", 2))
        return copyCommand(arguments.at(1), arguments.at(2), out, err, cancelled);
    if (takes("restore", 2))
        return restore(arguments.at(1), arguments.at(2), out);
    if (takes("--version", 0)) {
        out << "sorvanto-db " << platform::programVersion() << '\n';
        return done;
    }
    if (takes("update", 2))
        return update(arguments.at(1), arguments.at(2), out);
    if (command == "archive"_L1 && wantedMonths(arguments) > 0)
        return archive(arguments.at(1), arguments.at(2), wantedMonths(arguments), out, cancelled);
    if (command == "forget"_L1 && wantedPatient(arguments) > 0)
        return forget(arguments.at(1), wantedPatient(arguments), out);
    const bool help = command == "--help"_L1 || command == "-h"_L1;
    (help ? out : err) << usage;
    return help ? done : wrongUse;
}

}  // namespace

bool canBeStopped(const QStringList& arguments) {
    return QStringList{u"copy"_s, u"archive"_s}.contains(arguments.value(0));
}

int runCommand(const QStringList& arguments, QTextStream& out, QTextStream& err,
               const platform::Cancelled& cancelled) {
    try {
        return run(arguments, out, err, cancelled);
    } catch (const platform::RuntimeError& failure) {
        err << "sorvanto-db: " << failure.description() << '\n';
        return failed;
    }
}

}  // namespace sorvanto
