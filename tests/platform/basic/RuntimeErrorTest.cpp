// The failure that travels: its parts, and what foreign exceptions become.
#include "Raises.h"

#include <memory>
#include <new>
#include <stdexcept>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

template <class Exception>
RuntimeError travelled(const Exception& exception) {
    try {
        throw exception;
    } catch (...) {
        return currentError();
    }
}

}  // namespace

TEST(RuntimeError, CarriesItsParts) {
    const RuntimeError error(13, "Größe", "engine", "SELECT 1");
    EXPECT_EQ(error.number(), 13);
    EXPECT_EQ(error.description(), u"Größe"_s);
    EXPECT_EQ(error.source(), u"engine"_s);
    EXPECT_EQ(error.statement(), u"SELECT 1"_s);
    EXPECT_STREQ(error.what(), "Größe");
}

TEST(RuntimeError, CurrentErrorKeepsOursAndTranslatesOthers) {
    EXPECT_EQ(travelled(RuntimeError(error::statement, "x", {}, "DROP")).number(), error::statement);
    EXPECT_EQ(travelled(RuntimeError(error::statement, "x", {}, "DROP")).statement(), u"DROP"_s);
    EXPECT_EQ(travelled(std::runtime_error("far away")).number(), error::invalidProcedureCall);
    EXPECT_EQ(travelled(std::runtime_error("far away")).description(), u"far away"_s);
    EXPECT_EQ(travelled(std::bad_alloc()).number(), error::invalidProcedureCall);
    EXPECT_EQ(travelled(42).number(), error::invalidProcedureCall);
}

TEST(RuntimeError, EngineNumbersAreTheSignedOnes) {
    EXPECT_EQ(error::general, -2147467259);
    EXPECT_EQ(error::cannotOpen, -2147217843);
}

TEST(RuntimeError, DerefRefusesNothing) {
    const auto object = std::make_unique<int>(7);
    EXPECT_EQ(deref(object), 7);
    EXPECT_RAISES(deref(std::unique_ptr<int>()), error::objectNotSet);
    EXPECT_RAISES(deref(static_cast<int*>(nullptr)), error::objectNotSet);
}
