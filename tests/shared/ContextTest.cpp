// The context: the names of basMain lead to it, and another one shares nothing with it.
#include "shared/Context.h"

#include "platform/basic/RuntimeError.h"
#include "support/TestProgram.h"

namespace basMain = sorvanto::basMain;

namespace {

class ContextTest : public support::TestProgram {};

TEST_F(ContextTest, TheNamesOfTheSystemAreItsMembers) {
    EXPECT_EQ(&basMain::ErrorReporter, &context.reporter);
    EXPECT_EQ(&basMain::Options, &context.options);
    EXPECT_EQ(&basMain::Language, &context.language);
    EXPECT_EQ(&basMain::Search, &context.search);
    EXPECT_EQ(&basMain::Main, &context.window);
    EXPECT_EQ(&basMain::gConnection, &context.connection);
    EXPECT_EQ(&basMain::gConnectionString, &context.connectionString);
    EXPECT_EQ(&basMain::MixTypes, &context.mixTypes);
    EXPECT_EQ(&basMain::JarSizes, &context.jarSizes);
    EXPECT_EQ(&basMain::MixTimes, &context.mixTimes);
    EXPECT_EQ(&basMain::labelsCancelled, &context.labelsCancelled);
    EXPECT_EQ(&basMain::reportCancelled, &context.reportCancelled);
    EXPECT_EQ(&basMain::databaseLocation, &context.databaseLocation);
    EXPECT_EQ(&basMain::editOptions, &context.editOptions);
    EXPECT_EQ(&basMain::rescueDatabase, &context.rescueDatabase);
    EXPECT_EQ(&basMain::databaseOpened, &context.databaseOpened);
    EXPECT_EQ(&basMain::endProgram, &context.endProgram);
    EXPECT_EQ(&basMain::announced, &context.announced);
}

TEST_F(ContextTest, OpensTheDatabaseOfItsOwn) {
    createDatabase();
    sorvanto::Context other;
    int opened = 0;
    other.connection = std::make_shared<platform::Connection>();
    other.databaseLocation = [this] { return databasePath(); };
    other.databaseOpened = [&] { ++opened; };
    EXPECT_EQ(sorvanto::openDB(other)->state(), 1);
    EXPECT_EQ(sorvanto::openDB(other), other.connection);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(context.connection->state(), 0);
    EXPECT_EQ(context.connectionString, "");
}

TEST_F(ContextTest, TableEntriesAreChecked) {
    const QStringList table{"", "15 ml", "20 ml"};
    EXPECT_EQ(sorvanto::tableEntry(table, 0), "");
    EXPECT_EQ(sorvanto::tableEntry(table, 2), "20 ml");
    for (const int index : {-1, 3}) {
        try {
            sorvanto::tableEntry(table, index);
            ADD_FAILURE() << index;
        } catch (const platform::RuntimeError& failure) {
            EXPECT_EQ(failure.number(), platform::error::subscriptOutOfRange);
        }
    }
}

}  // namespace
