// Records on their way are left nowhere, also not by a program that was killed.
#include "db/ScratchFolder.h"

#include "platform/basic/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

namespace sorvanto {
namespace {

using namespace Qt::StringLiterals;

class ScratchFolderTest : public ::testing::Test {
protected:
    ScratchFolderTest() : m_before(qgetenv("TMPDIR")) { qputenv("TMPDIR", m_place.path().toUtf8()); }
    ~ScratchFolderTest() override { m_before.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_before); }

    QString path(const QString& name) const { return m_place.filePath(name); }
    static void write(const QString& name) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    void leave(const QString& name) const {
        ASSERT_TRUE(QDir().mkpath(path(name) + u"/below"_s));
        write(path(name) + u"/below/records.mdb"_s);
    }
    QStringList there() const {
        return QDir(m_place.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir m_place;
    QByteArray m_before;
};

TEST_F(ScratchFolderTest, GoesWithItsOwnerAndIsForHimAlone) {
    {
        const ScratchFolder scratch;
        write(scratch.filePath(u"records.mdb"_s));
        ASSERT_EQ(there().size(), 1);
        EXPECT_EQ(QFileInfo(path(there().front())).permissions() & (QFile::ReadGroup | QFile::ReadOther),
                  QFile::Permissions());
    }
    EXPECT_TRUE(there().isEmpty());
}

TEST_F(ScratchFolderTest, WhatAKilledProgramHasLeftGoesWithTheNext) {
    leave(u"sorvanto-records-abcdef"_s);
    const ScratchFolder scratch;
    EXPECT_FALSE(there().contains(u"sorvanto-records-abcdef"_s));
    EXPECT_EQ(there().size(), 1);
}

TEST_F(ScratchFolderTest, WhatIsInUseOrNotItsOwnStays) {
    auto first = std::make_unique<ScratchFolder>();
    const QString file = first->filePath(u"records.mdb"_s);
    write(file);
    leave(u"another-abcdef"_s);
    ASSERT_TRUE(QFile::link(path(u"another-abcdef"_s), path(u"sorvanto-records-linked"_s)));
    ASSERT_TRUE(QDir().mkdir(path(u"sorvanto-records-justnow"_s)));
    const ScratchFolder second;
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_TRUE(QFile::exists(path(u"another-abcdef/below/records.mdb"_s)));
    EXPECT_TRUE(there().contains(u"sorvanto-records-justnow"_s)) << "its maker has yet to lock it";
    first.reset();
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(ScratchFolderTest, WhereNoneCanBeMadeThatIsSaid) {
    write(path(u"file"_s));
    qputenv("TMPDIR", path(u"file"_s).toUtf8());
    EXPECT_THROW(ScratchFolder(), platform::RuntimeError);
}

}  // namespace
}  // namespace sorvanto
