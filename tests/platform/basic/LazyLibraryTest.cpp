// Loading a library by its first call, on one that every system has.
#include "platform/basic/LazyLibrary.h"

#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>

namespace {

using platform::LazyLibrary;
using platform::RuntimeError;

TEST(LazyLibraryTest, AFunctionIsTheLibrarysOwn) {
    LazyLibrary numbers(QStringLiteral("m"), 6);
    EXPECT_EQ(numbers.function<double(double)>("fabs")(-3.0), 3.0);
}

TEST(LazyLibraryTest, ALibraryThatTheSystemLacksIsNamed) {
    LazyLibrary none(QStringLiteral("sorvanto-none"), 1);
    try {
        none.function<void()>("anything");
        FAIL() << "a library that is nowhere was used";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), platform::error::fileNotFound);
        EXPECT_TRUE(error.description().contains(QStringLiteral("sorvanto-none")))
            << qPrintable(error.description());
    }
}

TEST(LazyLibraryTest, AFunctionThatTheLibraryLacksIsNamed) {
    LazyLibrary numbers(QStringLiteral("m"), 6);
    try {
        numbers.function<void()>("no_such_function");
        FAIL() << "a function that is nowhere was called";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.description().contains(QStringLiteral("no_such_function")))
            << qPrintable(error.description());
    }
}

}  // namespace
