// What a test says about a failure: which number travels out of an expression.
#pragma once

#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>

/// Expects a RuntimeError of that number.
#define EXPECT_RAISES(expression, expectedNumber)                                                            \
    try {                                                                                                    \
        static_cast<void>(expression);                                                                       \
        ADD_FAILURE() << "nothing raised by " #expression;                                                   \
    } catch (const platform::RuntimeError& raised) {                                                         \
        EXPECT_EQ(raised.number(), expectedNumber) << raised.what();                                         \
    }
