// The arithmetic of the dialect: floating division, whole division, powers, joined texts; NULL goes through.
// Errors are those of the dialect: divisionByZero, overflow, dataMismatch, invalidProcedureCall.
#pragma once

#include <QChar>
#include <QVariant>
#include <cstdint>
#include <optional>

namespace platform::dialect {

bool isText(const QVariant& value);
/// Dates are texts in the file, numbers in a calculation.
double numberOf(const QVariant& value);

/// Sums and products of whole numbers, exact; nothing where they don't fit and for any other sign.
std::optional<std::int64_t> wholeResult(std::int64_t a, char sign, std::int64_t b);
/// + - * / of any numbers; nothing where the result is no number and for any other sign.
std::optional<double> plainResult(double a, char sign, double b);

/// The sign is one of + - * / ^ & \ or M, which is Mod.
QVariant calculated(const QVariant& a, QChar sign, const QVariant& b);
/// -1, 0 or 1; texts without regard to case.
QVariant compared(const QVariant& a, const QVariant& b);
/// -1 or 0.
QVariant truth(const QVariant& value);
/// A tie goes to the even neighbour.
QVariant rounded(const QVariant& value, int decimals);

}  // namespace platform::dialect
