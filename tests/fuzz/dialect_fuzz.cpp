// Feeds any bytes to the dialect and hands what comes out to the engine: no crash, no failure of another kind
// than a refused statement, and never a change of the database by what passes as a SELECT.
#include "platform/basic/RuntimeError.h"
#include "platform/data/Criterion.h"
#include "platform/data/Dialect.h"
#include "platform/data/LikePattern.h"
#include "platform/data/postgres/LikeRegex.h"
#include "platform/data/postgres/OwnStatement.h"
#include "platform/data/postgres/ServerWords.h"
#include "platform/data/sqlite/FileEngine.h"
#include "platform/data/sqlite/LikeFunction.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

sqlite3* database() {
    static const std::unique_ptr<sqlite3, int (*)(sqlite3*)> memory = [] {
        sqlite3* opened = nullptr;
        sqlite3_open(":memory:", &opened);
        sqlite3_exec(
            opened,
            "CREATE TABLE T (id INTEGER PRIMARY KEY, name TEXT(20), day DATETIME); INSERT INTO T VALUES (1, 'a', NULL)",
            nullptr, nullptr, nullptr);
        platform::sqlite::installLike(opened);
        return std::unique_ptr<sqlite3, int (*)(sqlite3*)>(opened, sqlite3_close);
    }();
    return memory.get();
}

QString declaredType(const QString&, const QString& column) {
    return column.startsWith(u'd') ? u"DATETIME"_s : u"CURRENCY"_s;
}

void require(bool holds) {
    if (!holds)
        std::abort();
}

void tryStatement(const QString& text) {
    try {
        const platform::Translation found =
            platform::translateStatement(text, platform::sqlite::fileWords(), declaredType);
        const QByteArray sql = found.sql.toUtf8();
        const char* rest = nullptr;
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database(), sql.constData(), static_cast<int>(sql.size()), &statement,
                               &rest) == SQLITE_OK) {
            require(found.kind != platform::StatementKind::Select || sqlite3_stmt_readonly(statement) != 0);
            require(rest == sql.constData() + sql.size());
            require(sqlite3_bind_parameter_count(statement) == 0);
        }
        sqlite3_finalize(statement);
    } catch (const platform::RuntimeError& failure) {
        require(failure.number() == platform::error::statement ||
                failure.number() == platform::error::dataMismatch);
    }
}

/// Without the names of a server's tables: what is about these is drawn where there is one.
void tryServersWords(const QString& text) {
    static const platform::postgres::Catalogue nothing;
    static const platform::postgres::ServerWords words(nothing);
    const auto mayBeRefused = [](auto&& action) {
        try {
            action();
        } catch (const platform::RuntimeError& failure) {
            require(failure.number() == platform::error::statement ||
                    failure.number() == platform::error::dataMismatch);
        }
    };
    mayBeRefused([&] { platform::translateStatement(text, words, declaredType); });
    mayBeRefused([&] { platform::postgres::likeRegex(text); });
    const QString own = platform::postgres::ownStatement(text, nothing).sql;
    require(text.contains(u'?') || own == text);
}

void tryCriterion(const QString& text) {
    try {
        platform::Criterion(text).accepts(QVariant(qint64{1}));
    } catch (const platform::RuntimeError&) {
        // refused, as it may be
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto* bytes = reinterpret_cast<const char*>(data);
    const QString text = QString::fromUtf8(bytes, static_cast<qsizetype>(size));
    tryStatement(text);
    tryServersWords(text);
    tryStatement(u"SELECT id, name AS [n] FROM T WHERE (name Like '%1%')"_s.arg(text));
    tryStatement(u"UPDATE T SET [name] = %1, [day] = '%1' WHERE id = 1"_s.arg(text));
    tryCriterion(text);
    const std::string_view all(bytes, size);
    platform::LikePattern(all.substr(0, size / 2)).matches(all.substr(size / 2));
    return 0;
}
