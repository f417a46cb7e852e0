// A number as its decimal digits: taking them from a double or a text, rounding, writing.
#include "platform/basic/Decimal.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int significantDigits = 15;
constexpr int exponentLimit = 100000;  // far beyond any type, yet safe to add up

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

Decimal Decimal::fromDouble(double value) {
    if (!std::isfinite(value))
        throw RuntimeError(error::overflow, u"Overflow"_s);
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific, significantDigits - 1)
                         .ptr;
    return *fromText(QByteArray(buffer.data(), end - buffer.data()));
}

qsizetype Decimal::numberLength(const QByteArray& text) {
    const qsizetype size = text.size();
    qsizetype at = 0;
    if (at < size && (text[at] == '+' || text[at] == '-'))
        ++at;
    qsizetype count = 0;
    for (bool point = false; at < size && (isDigit(text[at]) || (text[at] == '.' && !point)); ++at) {
        if (text[at] == '.')
            point = true;
        else
            ++count;
    }
    if (count == 0)
        return 0;
    if (at < size && (text[at] == 'e' || text[at] == 'E')) {
        qsizetype end = at + 1;
        if (end < size && (text[end] == '+' || text[end] == '-'))
            ++end;
        const qsizetype firstDigit = end;
        while (end < size && isDigit(text[end]))
            ++end;
        if (end > firstDigit)
            at = end;
    }
    return at;
}

std::optional<Decimal> Decimal::fromText(const QByteArray& text) {
    if (text.isEmpty() || numberLength(text) != text.size())
        return std::nullopt;
    Decimal result;
    bool behindPoint = false;
    qsizetype at = 0;
    if (text[0] == '+' || text[0] == '-') {
        result.negative = text[0] == '-';
        ++at;
    }
    for (; at < text.size() && text[at] != 'e' && text[at] != 'E'; ++at) {
        if (text[at] == '.') {
            behindPoint = true;
        } else {
            result.digits += text[at];
            if (!behindPoint)
                ++result.point;
        }
    }
    if (at < text.size()) {
        const bool down = text[at + 1] == '-';
        if (down || text[at + 1] == '+')
            ++at;
        int exponent = 0;
        for (++at; at < text.size(); ++at)
            exponent = std::min(exponent * 10 + (text[at] - '0'), exponentLimit);
        result.point += down ? -exponent : exponent;
    }
    result.normalise();
    return result;
}

void Decimal::normalise() {
    qsizetype zeros = 0;
    while (zeros < digits.size() && digits[zeros] == '0')
        ++zeros;
    digits.remove(0, zeros);
    point -= static_cast<int>(zeros);
    while (digits.endsWith('0'))
        digits.chop(1);
    if (digits.isEmpty()) {
        point = 0;
        negative = false;
    }
}

void Decimal::round(int decimals, Tie tie) {
    const qsizetype keep = qsizetype{point} + decimals;
    if (keep >= digits.size())
        return;
    bool up = false;
    if (keep >= 0) {
        const char next = digits[keep];
        const bool tied = next == '5' && keep + 1 == digits.size();
        const bool odd = keep > 0 && (digits[keep - 1] - '0') % 2 == 1;
        up = tied ? tie == Tie::away || odd : next >= '5';
    }
    digits.truncate(std::max<qsizetype>(keep, 0));
    if (up) {
        qsizetype at = digits.size() - 1;
        while (at >= 0 && digits[at] == '9')
            digits[at--] = '0';
        if (at >= 0) {
            digits[at] = static_cast<char>(digits[at] + 1);
        } else {
            digits.prepend('1');
            ++point;
        }
    }
    normalise();
}

QByteArray Decimal::integerDigits() const {
    if (point <= 0)
        return "0"_ba;
    return digits.left(point).leftJustified(point, '0');
}

QByteArray Decimal::fractionDigits(int decimals) const {
    const QByteArray leading(std::clamp(-point, 0, decimals), '0');
    return (leading + digits.mid(std::max(point, 0))).left(decimals).leftJustified(decimals, '0');
}

QByteArray Decimal::fixed(int decimals) const {
    const QByteArray whole = integerDigits();
    const QByteArray fraction = fractionDigits(decimals);
    const bool allZero = whole.count('0') == whole.size() && fraction.count('0') == fraction.size();
    QByteArray result = negative && !allZero ? "-"_ba : QByteArray();
    result += whole;
    if (decimals > 0)
        result += '.' + fraction;
    return result;
}

}  // namespace platform
