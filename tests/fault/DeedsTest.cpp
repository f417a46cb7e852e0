// Everything that the program writes but the batch: formulas, deletions, options, texts, exports, copies, updates,
// a restore, an archive.
#include "Campaign.h"

#include "config/LastGoodOptions.h"
#include "config/clsOptions.h"
#include "core/CopySettings.h"
#include "core/DailyBackup.h"
#include "core/DatabaseUpdater.h"
#include "core/GoodCopy.h"
#include "db/Archive.h"
#include "db/DatabaseFile.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/report/ReportOutput.h"
#include "platform/report/ReportRun.h"
#include "platform/widgets/Boxes.h"
#include "prices/PriceTaking.h"
#include "records/NewLot.h"
#include "records/Restoration.h"
#include "reports/rptChemicals.h"
#include "shared/Translator.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace fault {
namespace {

std::string databaseState(const QString& folder) { return recordsOf(folder + u"/sorvanto.mdb"_s); }

QByteArray fileIn(const QString& folder, const QString& name) {
    QFile file(folder + '/'_L1 + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// But for the folder, which is another one each time.
std::string optionsState(const QString& folder) {
    QString options = QString::fromUtf8(fileIn(folder, u"options.xml"_s));
    return options.remove(QRegularExpression(u"(?<=<DBLocation>)[^<]*"_s)).toStdString();
}

/// What throws says so to its caller, who tells the user.
template <class Body>
void telling(World& world, Body body) {
    try {
        body();
    } catch (const platform::RuntimeError& failure) {
        world.say(failure.description());
    }
}

void chooseFormula(World& world) {
    world.click(u"cmdFormulas"_s);
    world.search(u"Cooling Gel"_s);
}

}  // namespace

TEST(Deeds, AFormulaIsSaved) {
    campaign({.name = "saved formula",
              .prepare =
                  [](World& world) {
                      chooseFormula(world);
                      world.click(u"cmdEdit"_s);
                      support::child<platform::TextBox>(*world.window->screen(formulas), u"txtfrm_Desc"_s)
                          ->setText(u"another description"_s);
                  },
              .act = [](World& world) { world.click(u"cmdSave"_s); },
              .state = databaseState,
              .inSteps = true});
}

TEST(Deeds, AFormulaIsDeleted) {
    campaign({.name = "deleted formula",
              .prepare = chooseFormula,
              .act = [](World& world) { world.click(u"cmdDelete"_s); },
              .state = databaseState,
              .inSteps = true});
}

TEST(Deeds, ABatchIsDeleted) {
    campaign({.name = "deleted batch",
              .prepare =
                  [](World& world) {
                      world.click(u"cmdLogs"_s);
                      world.click(u"cmdLast"_s);
                  },
              .act = [](World& world) { world.click(u"cmdDelete"_s); },
              .state = databaseState,
              .inSteps = true});
}

namespace {

/// The identity of a record that is added is another one each time.
std::string stateWithoutIdentities(const QString& folder) {
    static const QRegularExpression identity(
        u"[ 0-9A-F]{8}-[ 0-9A-F]{4}-[ 0-9A-F]{4}-[ 0-9A-F]{4}-[ 0-9A-F]{12}"_s);
    return QString::fromStdString(databaseState(folder)).replace(identity, u"identity"_s).toStdString();
}

}  // namespace

TEST(Deeds, ANewLotIsAdded) {
    campaign({.name = "new lot",
              .prepare = [](World&) {},
              .act =
                  [](World& world) {
                      const NewLot delivered{u"L9"_s, u"Harbor"_s, platform::Currency::fromText(u"0.285"_s),
                                             platform::Currency::fromText(u"4"_s)};
                      const clsChemicalPtr former = clsChemical().openChemical(3, QString());
                      if (!former || !addNewLot(*former, delivered, {1}).chemical)
                          world.say(u"not added"_s);
                  },
              .state = stateWithoutIdentities});
}

TEST(Deeds, PricesAreTaken) {
    campaign({.name = "price list",
              .prepare = [](World&) {},
              .act =
                  [](World& world) {
                      telling(world, [&] {
                          const PriceTable table{{{{u"Borax"_s}, {u"120"_s, true}, {u"100 g"_s}},
                                                  {{u"Camphor"_s}, {u"450"_s, true}, {u"100 g"_s}}}};
                          PriceColumns columns;
                          columns.column = {0, PriceColumns::none, PriceColumns::none, 1, PriceColumns::none,
                                            2, PriceColumns::none};
                          columns.mark.fill(DecimalMark::point);
                          const PriceStock stock(stockedChemicals(openDB()));
                          PriceProposals proposals(table, columns, stock);
                          ASSERT_EQ(proposals.count(PriceState::change), 2);
                          proposals.tick(0, true);
                          proposals.tick(1, true);
                          if (takePrices(openDB(), proposals, stock, u"list.csv"_s) != Taken::All)
                              world.say(u"not taken"_s);
                      });
                  },
              .state = databaseState});
}

TEST(Deeds, ADeletionIsTakenBack) {
    DeletedRecord deleted;
    campaign({.name = "restored formula",
              .prepare =
                  [&](World& world) {
                      chooseFormula(world);
                      deleted = aboutToDelete(basMain::context(), u"Formula"_s, 1);
                      world.click(u"cmdDelete"_s);
                  },
              .act =
                  [&](World& world) {
                      telling(world, [&] {
                          if (takeBackDeletion(basMain::context(), deleted) != Restored::Whole)
                              world.say(u"not restored"_s);
                      });
                  },
              .state = databaseState});
}

TEST(Deeds, OptionsAreSaved) {
    campaign({.name = "options",
              .prepare = [](World&) {},
              .act =
                  [](World&) {
                      basMain::Options->StoreName(u"Another store"_s);
                      basMain::Options->saveOptions();
                  },
              .state = optionsState});
}

TEST(Deeds, SettingsAreSaved) {
    campaign({.name = "settings",
              .prepare = [](World&) {},
              .act =
                  [](World& world) {
                      telling(world, [] {
                          CopySettings::remember(u"/pharmacy.mdb"_s, u"0123456789abcdef0123456789abcdef"_s);
                      });
                  },
              .state =
                  [](const QString& folder) {
                      // The identity of the open database stands there as well, by its path.
                      static const QRegularExpression place(u"sorvanto-\\w{6}"_s);
                      return QString::fromUtf8(fileIn(folder, u"copies.ini"_s))
                          .replace(place, u"folder"_s)
                          .toStdString();
                  }});
}

TEST(Deeds, ATextIsAddedToTheLanguageFile) {
    campaign(
        {.name = "new text",
         .prepare = [](World&) {},
         .act =
             [](World&) {
                 QString text = u"A text that nobody has seen"_s;
                 QString result;
                 basMain::Language->translate(text, result);
                 EXPECT_EQ(result, text);
             },
         .state =
             [](const QString& folder) { return fileIn(folder, u"EnglishTranslation.xml"_s).toStdString(); },
         .silent = true});
}

TEST(Deeds, AReportIsExported) {
    campaign(
        {.name = "export",
         .prepare = [](World& world) { world.click(u"cmdChemicals"_s); },
         .act = [](World& world) { world.click(u"mnuReportx"_s); },
         .state = [](const QString& folder) { return fileIn(folder, u"Chemicals.xls"_s).toStdString(); }});
}

TEST(Deeds, APdfIsSaved) {
    campaign({.name = "PDF",
              .prepare = [](World&) {},
              .act =
                  [](World& world) {
                      platform::ReportRun run(std::make_unique<rptChemicals>(basMain::context()));
                      run.makeAll();
                      telling(world,
                              [&] { platform::savePdf(run.document(), world.folder.path(u"list.pdf"_s)); });
                  },
              .state =
                  [](const QString& folder) {
                      const QByteArray pdf = fileIn(folder, u"list.pdf"_s);
                      const bool whole = pdf.startsWith("%PDF") && pdf.trimmed().endsWith("%%EOF");
                      return std::string(whole ? "whole" : pdf.isEmpty() ? "none" : "part");
                  },
              .usersFile = true});
}

namespace {

/// Only what bears a copy's name counts.
std::string copiesState(const QString& folder) {
    std::string state = databaseState(folder);
    const QDir backups(folder + u"/backups"_s);
    for (const QString& name : backups.entryList({u"*.mdb"_s}, QDir::Files, QDir::Name)) {
        state += name.toStdString() + ": ";
        const QStringList problems = problemsOf(backups.filePath(name));
        state += problems.isEmpty() ? recordsOf(backups.filePath(name)) : problems.join(' '_L1).toStdString();
    }
    return state;
}

}  // namespace

TEST(Deeds, TheDaysCopyIsMade) {
    campaign({.name = "day's copy",
              .prepare = [](World&) {},
              .act =
                  [](World& world) {
                      DailyBackup backup(basMain::context(), 0);
                      backup.startSoon();
                      EXPECT_TRUE(QTest::qWaitFor([&] { return !backup.running(); }, 20'000)) << "hangs";
                      world.clock.advance(1);
                  },
              .state = copiesState});
}

namespace {

void update(World& world) {
    telling(world, [&] {
        QString version = basMain::Options->DBVersion();
        bool applied = false;
        DatabaseUpdater().ApplyUpdates(openDB(), world.folder.path(u"dbupdate.xml"_s), version, applied);
        if (applied)
            basMain::Options->DBVersion(version);
    });
}

}  // namespace

TEST(Deeds, TheDatabaseIsUpdated) {
    campaign({.name = "update",
              .window = World::Window::OldFile,
              .prepare =
                  [](World& world) {
                      ASSERT_TRUE(QFile::copy(QStringLiteral(SORVANTO_SOURCE_DIR "/data/dbupdate.xml"),
                                              world.folder.path(u"dbupdate.xml"_s)));
                  },
              .act = update,
              .state = databaseState,
              .inSteps = true});
}

TEST(Deeds, ACopyIsRestored) {
    campaign({.name = "restore",
              .window = World::Window::None,
              .prepare =
                  [](World& world) {
                      platform::backupDatabase(world.databasePath(), world.folder.path(u"kept.mdb"_s));
                      support::runSql(world.databasePath(), u"DELETE FROM LogChem; DELETE FROM FormChem"_s);
                  },
              .act =
                  [](World& world) {
                      telling(world, [&] {
                          platform::restoreDatabase(world.folder.path(u"kept.mdb"_s), world.databasePath());
                      });
                  },
              .state = databaseState});
}

namespace {

const QString closedMix = u"mixes/closed/20260307-000000-0000000A.xml"_s;

/// Put back, and not written down as such: a check would find a changed history. The journal lies in one place or the
/// other at least.
std::string putBackState(const QString& folder) {
    const bool isOpen = !fileIn(folder, u"mixes/0000000A.xml"_s).isEmpty();
    const bool isClosed = !fileIn(folder, closedMix).isEmpty();
    return databaseState(folder) + (isOpen || isClosed ? "" : "\nthe mix is lost");
}

/// An archive beside the old file is of no harm; what bears its name is whole, and the file that gave batches away
/// has it.
std::string archiveState(const QString& folder) {
    const QString archive = folder + u"/old.mdb"_s;
    const std::string file = databaseState(folder);
    const bool gaveAway = file.find("== ArchivedBatch") != std::string::npos;
    if (!gaveAway && !QFile::exists(archive))
        return file;
    const QStringList problems = problemsOf(archive);
    if (!problems.isEmpty())
        return file + "\nnot sound: " + problems.join(' '_L1).toStdString();
    if (gaveAway)
        return file + '\n' + recordsOf(archive);
    const auto rows =
        support::runSql(archive, u"SELECT (SELECT count(*) FROM Log), (SELECT count(*) FROM LogChem)"_s);
    return support::rowsText(rows) == "3|4"_L1 ? file : file + "\nnot whole";
}

}  // namespace

TEST(Deeds, ADamagedDatabaseIsPutBack) {
    campaign({.name = "put back",
              .window = World::Window::None,
              .prepare =
                  [](World& world) {
                      platform::backupDatabase(world.databasePath(), world.folder.path(u"kept.mdb"_s));
                      support::runSql(world.databasePath(), u"DELETE FROM LogChem; DELETE FROM FormChem"_s);
                      QDir(world.folder.path()).mkpath(u"mixes/closed"_s);
                      world.folder.write(closedMix, "<Mix ID=\"0000000A\" State=\"logged\"><Formula/></Mix>");
                  },
              .act =
                  [](World& world) {
                      telling(world, [&] {
                          GoodCopy copy;
                          copy.path = world.folder.path(u"kept.mdb"_s);
                          copy.unknownToIt = {{world.folder.path(closedMix), u"SV04260012"_s}};
                          const QStringList left = putBack(copy, world.databasePath()).notOpened;
                          if (!left.isEmpty())
                              world.say(left.join(' '_L1));
                      });
                  },
              .state = putBackState});
}

TEST(Deeds, ANewDatabaseIsMade) {
    campaign(
        {.name = "new database",
         .window = World::Window::None,
         .prepare = [](World&) {},
         .act =
             [](World& world) { telling(world, [&] { createDatabase(world.folder.path(u"new.mdb"_s)); }); },
         .state = [](const QString& folder) { return recordsOf(folder + u"/new.mdb"_s); }});
}

TEST(Deeds, TheLastGoodOptionsAreTaken) {
    campaign({.name = "last good options",
              .window = World::Window::None,
              .prepare =
                  [](World& world) {
                      basMain::Options->saveOptions();
                      world.folder.write(u"options.xml"_s, "<Configuration><Opt");
                  },
              .act =
                  [](World& world) {
                      telling(world, [&] { lastGoodOptions::putBack(world.folder.path(u"options.xml"_s)); });
                  },
              .state = optionsState});
}

TEST(Deeds, OldBatchesAreArchived) {
    campaign({.name = "archive",
              .window = World::Window::None,
              .prepare =
                  [](World& world) {
                      support::runSql(world.databasePath(),
                                      u"INSERT INTO Patient (PatientID, pat_LName) VALUES (1, 'Reed');"
                                      "INSERT INTO RXs (LogID, PatientID, rxs_QTY) VALUES (1, 1, 30)"_s);
                  },
              .act =
                  [](World& world) {
                      telling(world, [&] {
                          archiveDatabase(world.databasePath(), world.folder.path(u"old.mdb"_s),
                                          QDate(2026, 2, 1));
                      });
                  },
              .state = archiveState});
}

}  // namespace fault
