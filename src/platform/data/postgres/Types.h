// The server's numbers of the types that values come as.
#pragma once

#include <cstdint>

namespace platform::postgres::type {

inline constexpr std::uint32_t boolean = 16, int8 = 20, int2 = 21, int4 = 23, float4 = 700, float8 = 701,
                               numeric = 1700;

}  // namespace platform::postgres::type
