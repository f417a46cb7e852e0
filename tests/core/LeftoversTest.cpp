// Temporary files of killed writes go; whatever else lies there stays.
#include "core/Leftovers.h"
#include "TempProgramFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(Leftovers, OnlyWhatTheProgramItselfHasNamedGoes) {
    const support::TempProgramFolder folder;
    for (const char* name : {"mixes/closed", "backups", "share"})
        QDir(folder.path()).mkpath(name);
    const QStringList goes{"options.xml.a1B2c3",
                           "options.last-good.xml.a1B2c3",
                           "GermanTranslation.xml.Zz9xx0",
                           "sorvanto.mdb.restored",
                           "sorvanto.mdb.restored.part",
                           "copies.ini.a1B2c3",
                           "window.ini.a1B2c3",
                           "dbupdate.xml.a1B2c3",
                           "delivered.txt.a1B2c3",
                           "backups/pharmacy-before-update-from-1.1-2026-03-07.mdb.part",
                           "backups/pharmacy-before-update-from-1.1-2026-03-07.mdb.part-journal",
                           "share/pharmacy.mdb.restored.part-journal",
                           "sorvanto.mdb.part",
                           "sorvanto.mdb.part-journal",
                           "share/pharmacy.mdb.part",
                           "share/pharmacy.mdb.part-journal",
                           "mixes/0000000A.xml.a1B2c3",
                           "mixes/closed/20260307-140509-0000000A.xml.a1B2c3"};
    const QStringList stays{"options.xml",
                            "options.xml.backup1",
                            "options.broken.xml",
                            "notes.xml.a1B2c3",
                            "sorvanto.mdb.before-restore",
                            "mixes/0000000A.xml",
                            "mixes/mine.txt",
                            "share/other.mdb.restored",
                            "backups/mine.part",
                            "dbupdate.xml.before",
                            "share/other.mdb.part",
                            "mine.mdb.part",
                            "share/sorvanto.mdb.part",
                            "letter.restored"};
    for (const QString& name : goes + stays)
        folder.write(name, "x");
    ASSERT_TRUE(QFile::link(folder.path("notes.xml.a1B2c3"), folder.path("options.xml.Li1nk2")));
    sorvanto::removeLeftovers(folder.path("share/pharmacy.mdb"));
    for (const QString& name : goes)
        EXPECT_FALSE(folder.has(name)) << name.toStdString();
    for (const QString& name : stays)
        EXPECT_TRUE(folder.has(name)) << name.toStdString();
    EXPECT_TRUE(folder.has("options.xml.Li1nk2"));
}

/// Of the literals in the sources.
QStringList namesOfExports() {
    static const QRegularExpression literal(u"(\\w+\\.xls)\"_s"_s);
    QStringList names;
    QDirIterator sources(QStringLiteral(SORVANTO_SOURCE_DIR "/src"), {u"*.cpp"_s}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        QFile source(sources.next());
        if (!source.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(source.readAll());
        for (auto found = literal.globalMatch(text); found.hasNext();)
            names << found.next().captured(1);
    }
    return names;
}

TEST(Leftovers, HalfAnExportGoesSinceItMayNamePatients) {
    const support::TempProgramFolder folder;
    const QStringList names = namesOfExports();
    ASSERT_GE(names.size(), 10) << names.join(' ').toStdString();
    for (const QString& name : names) {
        folder.write(name, "whole");
        folder.write(name + u".a1B2c3"_s, "half");
    }
    folder.write("Chemicals.xls.backup", "the user's");
    sorvanto::removeLeftovers({});
    for (const QString& name : names) {
        EXPECT_TRUE(folder.has(name)) << name.toStdString();
        EXPECT_FALSE(folder.has(name + u".a1B2c3"_s)) << name.toStdString();
    }
    EXPECT_TRUE(folder.has("Chemicals.xls.backup"));
}

TEST(Leftovers, FoldersOfTheFirstVersionAreTheOwnersAloneFromNowOn) {
    const support::TempProgramFolder folder;
    const auto others = QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    for (const char* name : {"mixes", "mixes/closed", "backups", "mine"}) {
        QDir(folder.path()).mkpath(name);
        QFile::setPermissions(folder.path(name), owner | others);
    }
    sorvanto::keepFoldersToOwner();
    for (const char* name : {"mixes", "mixes/closed", "backups"})
        EXPECT_FALSE(QFile::permissions(folder.path(name)) & others) << name;
    EXPECT_TRUE(QFile::permissions(folder.path("mine")) & others);
}

}  // namespace
