// Which records this program works on. A file that is older is brought up to date at the start; a server belongs to
// several benches, so its owner does it, and a program that does not fit does not work there.
#pragma once

#include "platform/data/postgres/Trial.h"

#include <QString>
#include <cstdint>

namespace platform {
class Connection;
}

namespace sorvanto {

/// Of the newest records, in ten-thousandths: 12000 is 1.2.
inline constexpr std::int64_t recordsVersion = 12000;

/// Why this program does not work on the records of an open server, as a sentence that says what to do; empty where it does.
/// Throws as Connection::execute.
QString versionRefused(const platform::Connection& server);

/// From now on also where a line takes the place of a lost one: the server may have been brought up to date meanwhile. What
/// would go by that line fails with general; the reason is for errors.log, so it is not translated.
void keepRefusingVersions(const platform::Connection& server);

/// The same for a trial: not while the records are of another version, and not while they are being brought up to date.
platform::postgres::Admission admissionOfTrial();

}  // namespace sorvanto
