// What is said to the user about a server and its address.
#pragma once

#include "platform/data/postgres/Trial.h"

#include <QString>

namespace sorvanto {

/// A sentence: what came of the trial, and what to do where it did not work. seconds: how long it was allowed to take.
QString trialText(platform::postgres::TrialEnd end, int seconds);

/// Why a location may not be stored, and what to do instead; empty where it may. A password is never repeated.
QString locationRefused(const QString& location);

/// A location as it may be shown: that of a server in which a password stands, without anything of it.
QString shownLocation(const QString& location);

/// The same in a word or two: the name of the file, or of database and computer.
QString shortLocation(const QString& location);

}  // namespace sorvanto
