// The failure that travels through the program, and what other exceptions become.
#include "platform/basic/RuntimeError.h"

#include <new>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

RuntimeError::RuntimeError(std::int32_t number, QString description, QString source, QString statement)
    : m_number(number), m_description(std::move(description)), m_source(std::move(source)),
      m_statement(std::move(statement)), m_what(m_description.toUtf8()) {}

RuntimeError currentError() {
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {error::invalidProcedureCall, u"Out of memory"_s};
    } catch (const std::exception& error) {
        return {error::invalidProcedureCall, QString::fromUtf8(error.what())};
    } catch (...) {
        return {error::invalidProcedureCall, u"Unknown failure"_s};
    }
}

void throwOverflow() { throw RuntimeError(error::overflow, u"Overflow"_s); }

void throwTypeMismatch() { throw RuntimeError(error::typeMismatch, u"Type mismatch"_s); }

}  // namespace platform
