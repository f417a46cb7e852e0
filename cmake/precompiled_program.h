// Precompiled for programs and benchmarks.
#pragma once
#include "precompiled_gui.h"
