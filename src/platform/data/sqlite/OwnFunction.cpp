// Values of the engine in, a value of the engine or an error out.
#include "platform/data/sqlite/OwnFunction.h"

#include <exception>
#include <memory>
#include <sqlite3.h>

namespace platform::sqlite {

namespace {

PlainValue plainValue(sqlite3_value* value) {
    constexpr char kinds[] = {'?', 'i', 'r', 't', 'b', 'n'};
    const int type = sqlite3_value_type(value);
    const void* bytes = type == SQLITE_BLOB ? sqlite3_value_blob(value) : sqlite3_value_text(value);
    const int size = bytes ? sqlite3_value_bytes(value) : 0;
    return {kinds[type], QByteArray::fromRawData(static_cast<const char*>(bytes), size)};
}

void giveResult(sqlite3_context* context, const QVariant& result) {
    if (!result.isValid())
        return sqlite3_result_null(context);
    const bool isText = result.userType() == QMetaType::QString;
    const QByteArray bytes = isText ? result.toString().toUtf8() : result.toByteArray();
    const auto size = static_cast<int>(bytes.size());
    if (isText)
        sqlite3_result_text(context, bytes.constData(), size, SQLITE_TRANSIENT);
    else
        sqlite3_result_blob(context, bytes.constData(), size, SQLITE_TRANSIENT);
}

void callOwn(sqlite3_context* context, int count, sqlite3_value** arguments) {
    try {
        std::vector<PlainValue> values;
        values.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            values.push_back(plainValue(arguments[i]));
        giveResult(context, (*static_cast<const EngineFunction*>(sqlite3_user_data(context)))(values));
    } catch (const std::exception& failure) {
        sqlite3_result_error(context, failure.what(), -1);
    }
}

}  // namespace

void installFunction(sqlite3* database, const char* name, FunctionResult result, EngineFunction function) {
    const int flags =
        SQLITE_UTF8 | SQLITE_INNOCUOUS | (result == FunctionResult::Same ? SQLITE_DETERMINISTIC : 0);
    auto kept = std::make_unique<EngineFunction>(std::move(function));
    sqlite3_create_function_v2(database, name, -1, flags, kept.release(), callOwn, nullptr, nullptr,
                               [](void* old) { delete static_cast<EngineFunction*>(old); });
}

}  // namespace platform::sqlite
