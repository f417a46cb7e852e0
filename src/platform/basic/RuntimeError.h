// The one kind of failure that travels through the program: number, description, source.
// Errors of libraries and of the standard library are turned into it where they are met.
#pragma once

#include <QString>
#include <cstdint>
#include <exception>

namespace platform {

using namespace Qt::StringLiterals;

/// Numbers that code tests for or that a report should show; others may be used freely.
namespace error {
inline constexpr std::int32_t invalidProcedureCall = 5;
inline constexpr std::int32_t overflow = 6;
inline constexpr std::int32_t subscriptOutOfRange = 9;
inline constexpr std::int32_t divisionByZero = 11;
inline constexpr std::int32_t typeMismatch = 13;
inline constexpr std::int32_t fileNotFound = 53;
inline constexpr std::int32_t deviceIo = 57;
inline constexpr std::int32_t diskFull = 61;
inline constexpr std::int32_t permissionDenied = 70;
inline constexpr std::int32_t objectNotSet = 91;
inline constexpr std::int32_t invalidUseOfNull = 94;
inline constexpr std::int32_t noCurrentRecord = 3021;  ///< before the first or after the last row
inline constexpr std::int32_t itemNotFound = 3265;     ///< no field of that name or position
inline constexpr std::int32_t objectClosed = 3704;     ///< a closed connection or result set is used
inline constexpr std::int32_t general = static_cast<std::int32_t>(
    0x80004005);  ///< engine's general refusal, also a violated relation; opening: file is locked or no database
inline constexpr std::int32_t cannotOpen =
    static_cast<std::int32_t>(0x80040E4D);  ///< file can't be opened (permission)
inline constexpr std::int32_t statement = static_cast<std::int32_t>(0x80040E14);  ///< the statement is wrong
inline constexpr std::int32_t dataMismatch =
    static_cast<std::int32_t>(0x80040E07);  ///< a value does not fit its column
}  // namespace error

class RuntimeError : public std::exception {
public:
    RuntimeError(std::int32_t number, QString description, QString source = {}, QString statement = {});

    std::int32_t number() const { return m_number; }
    const QString& description() const { return m_description; }
    const QString& source() const { return m_source; }
    /// Text of the failed database statement, empty where there is none.
    const QString& statement() const { return m_statement; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    std::int32_t m_number;
    QString m_description;
    QString m_source;
    QString m_statement;
    QByteArray m_what;
};

/// Runs in a catch block: the exception in flight as a RuntimeError (std::bad_alloc and other
/// standard exceptions become number 5 with their text).
RuntimeError currentError();

[[noreturn]] void throwOverflow();
[[noreturn]] void throwTypeMismatch();

/// Throws objectNotSet when the pointer is empty; otherwise gives the object.
template <class Pointer>
auto& deref(const Pointer& pointer) {
    if (!pointer)
        throw RuntimeError(error::objectNotSet, u"Object variable not set"_s);
    return *pointer;
}

}  // namespace platform
