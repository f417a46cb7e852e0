// Precompiled for tests.
#pragma once
#include "precompiled_gui.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
