// What a failing procedure hands to the reporter, and how it goes on.
#include "shared/Guard.h"

#include "platform/basic/RuntimeError.h"
#include "shared/basMain.h"
#include "support/TestProgram.h"

using sorvanto::guarded;
using sorvanto::ResumeNext;
namespace basMain = sorvanto::basMain;
namespace error = platform::error;

namespace {

[[noreturn]] void failWith(std::int32_t number, const QString& statement = {}) {
    throw platform::RuntimeError(number, "It failed", "Engine", statement);
}

class GuardTest : public support::TestProgram {};

TEST_F(GuardTest, HandsOverTheTenArguments) {
    guarded("frmLog:saveForm", [] { failWith(error::general, "SELECT 1"); });
    const auto call = expectReport("frmLog:saveForm");
    EXPECT_EQ(call.description, "It failed");
    EXPECT_EQ(call.number, "-2147467259");
    EXPECT_EQ(call.source, "Engine");
    EXPECT_EQ(call.statementNumber, 0);
    EXPECT_EQ(call.empty, "");
    EXPECT_EQ(call.flags, (std::vector<bool>{true, false, true, true}));
    EXPECT_EQ(call.statement, "SELECT 1");
}

TEST_F(GuardTest, AReportWithoutAStatementHasNone) {
    guarded("a:b", [] { failWith(error::general, "SELECT 1"); });
    guarded("a:c", [] { failWith(error::typeMismatch); });
    expectReport("a:b");
    EXPECT_EQ(expectReport("a:c").statement, "");
}

TEST_F(GuardTest, LeavesTheProcedureWithWhatWasSetSoFar) {
    QString half = "before";
    const int result = guarded("clsLog:openLog", -7, [&]() -> int {
        half = "set";
        failWith(error::noCurrentRecord);
    });
    EXPECT_EQ(result, -7);
    EXPECT_EQ(half, "set");
    expectReport("clsLog:openLog");
}

TEST_F(GuardTest, GivesTheResultWhereNothingFails) {
    EXPECT_EQ(guarded("a:b", 0, [] { return 42; }), 42);
    int runs = 0;
    guarded("a:b", [&] { ++runs; });
    EXPECT_EQ(runs, 1);
}

TEST_F(GuardTest, ResumesAtTheNextStatement) {
    const ResumeNext step("frmMain:Form_Load");
    QStringList done;
    step([&] { done << "first"; });
    step([&] {
        failWith(error::objectNotSet);
        done << "never";
    });
    step([&] { failWith(error::overflow); });
    step([&] { done << "last"; });
    EXPECT_EQ(done, QStringList({"first", "last"}));
    EXPECT_EQ(expectReport("frmMain:Form_Load").number, "91");
    EXPECT_EQ(expectReport("frmMain:Form_Load").number, "6");
}

TEST_F(GuardTest, AnInnerProcedureReportsForItselfAndTheOuterGoesOn) {
    bool went = false;
    guarded("outer:run", [&] {
        guarded("inner:run", [] { failWith(error::typeMismatch); });
        went = true;
    });
    EXPECT_TRUE(went);
    expectReport("inner:run");
}

TEST_F(GuardTest, StandardAndForeignExceptionsAreReportedToo) {
    guarded("a:b", [] { throw std::runtime_error("from a library"); });
    guarded("a:c", [] { throw 3; });
    const auto library = expectReport("a:b");
    EXPECT_EQ(library.number, "5");
    EXPECT_EQ(library.description, "from a library");
    expectReport("a:c");
}

TEST_F(GuardTest, WithoutAReporterTheConsoleHearsOfIt) {
    basMain::ErrorReporter.reset();
    testing::internal::CaptureStderr();
    guarded("frmMain:Form_Load", [] { failWith(error::objectNotSet); });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "frmMain:Form_Load: error 91: It failed\n");
}

}  // namespace
