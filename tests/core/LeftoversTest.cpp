// Temporary files of killed writes go; whatever else lies there stays.
#include "core/Leftovers.h"
#include "TempProgramFolder.h"

#include <QDir>

namespace {

TEST(Leftovers, OnlyWhatTheProgramItselfHasNamedGoes) {
    const support::TempProgramFolder folder;
    QDir(folder.path()).mkpath("mixes/closed");
    const QStringList goes{"options.xml.a1B2c3",
                           "options.last-good.xml.a1B2c3",
                           "GermanTranslation.xml.Zz9xx0",
                           "sorvanto.mdb.restored",
                           "sorvanto.mdb.restored.part",
                           "mixes/0000000A.xml.a1B2c3",
                           "mixes/closed/20260307-140509-0000000A.xml.a1B2c3"};
    const QStringList stays{"options.xml",      "options.xml.backup1",         "options.broken.xml",
                            "notes.xml.a1B2c3", "sorvanto.mdb.before-restore", "mixes/0000000A.xml",
                            "mixes/mine.txt"};
    for (const QString& name : goes + stays)
        folder.write(name, "x");
    ASSERT_TRUE(QFile::link(folder.path("notes.xml.a1B2c3"), folder.path("options.xml.Li1nk2")));
    sorvanto::removeLeftovers();
    for (const QString& name : goes)
        EXPECT_FALSE(folder.has(name)) << name.toStdString();
    for (const QString& name : stays)
        EXPECT_TRUE(folder.has(name)) << name.toStdString();
    EXPECT_TRUE(folder.has("options.xml.Li1nk2"));
}

}  // namespace
