// The pattern is taken apart once a statement.
#include "platform/data/sqlite/LikeFunction.h"

#include "platform/data/LikePattern.h"

#include <memory>
#include <sqlite3.h>

namespace platform::sqlite {

namespace {

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void like(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<LikePattern> fresh;
    if (!pattern) {
        fresh = std::make_unique<LikePattern>(textOf(arguments[0]));
        pattern = fresh.get();
    }
    if (!pattern->isValid()) {
        sqlite3_result_error(context, "Invalid pattern: ] is missing", -1);
        return;
    }
    sqlite3_result_int(context, pattern->matches(textOf(arguments[1])) ? 1 : 0);
    if (fresh)
        sqlite3_set_auxdata(context, 0, fresh.release(),
                            [](void* old) { delete static_cast<LikePattern*>(old); });
}

}  // namespace

void installLike(sqlite3* database) {
    sqlite3_create_function_v2(database, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                               nullptr, like, nullptr, nullptr, nullptr);
}

}  // namespace platform::sqlite
