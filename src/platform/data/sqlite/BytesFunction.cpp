#include "platform/data/sqlite/BytesFunction.h"

#include <sqlite3.h>

namespace platform::sqlite {

namespace {

PlainValue plainValue(sqlite3_value* value) {
    constexpr char kinds[] = {'?', 'i', 'r', 't', 'b', 'n'};
    const int type = sqlite3_value_type(value);
    const void* bytes = type == SQLITE_BLOB ? sqlite3_value_blob(value) : sqlite3_value_text(value);
    return {kinds[type], QByteArray(static_cast<const char*>(bytes), bytes ? sqlite3_value_bytes(value) : 0)};
}

void giveBytes(sqlite3_context* context, int count, sqlite3_value** arguments) {
    std::vector<PlainValue> values;
    values.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        values.push_back(plainValue(arguments[i]));
    const auto function = reinterpret_cast<BytesFunction>(sqlite3_user_data(context));
    const QByteArray result = function(values);
    sqlite3_result_blob(context, result.constData(), static_cast<int>(result.size()), SQLITE_TRANSIENT);
}

}  // namespace

void installBytesFunction(sqlite3* database, const char* name, BytesFunction function) {
    sqlite3_create_function_v2(database, name, -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                               reinterpret_cast<void*>(function), giveBytes, nullptr, nullptr, nullptr);
}

}  // namespace platform::sqlite
