// The kinds of values of columns and fields.
#pragma once

namespace platform {

/// What the values of a column or field are. Computed: as the engine holds them, whatever comes.
enum class FieldKind { Computed, Text, LongText, Short, Long, Double, Money, Date, Flag };

}  // namespace platform
