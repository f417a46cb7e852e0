// Feeds any text to the conversions of numbers and money. Each gives exactly the value that the text says,
// told by another way of reading, or refuses; what is written reads back; a rounded text is the nearest one.
#include "Fuzz.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Format.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"

#include <QRegularExpression>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

using fuzz::require;
using namespace platform;

namespace {

constexpr double largest = std::numeric_limits<double>::max();
__extension__ using Wide = __int128;

const QRegularExpression& numberPattern() {
    static const QRegularExpression pattern(
        u"^([+-]?)(?:([0-9]+)(?:\\.([0-9]*))?|\\.([0-9]+))(?:[eE]([+-]?[0-9]+))?"_s);
    return pattern;
}

/// The match of a whole text, nothing when it is no number.
std::optional<QRegularExpressionMatch> wholeNumber(const QString& text) {
    const auto match = numberPattern().match(text);
    return match.hasMatch() && match.capturedLength() == text.size() ? std::optional(match) : std::nullopt;
}

double valueOf(const QString& number) { return std::strtod(number.toLatin1().constData(), nullptr); }

/// The exact count of ten-thousandths, a tie to the even one; nothing when the check's own arithmetic is too
/// small.
std::optional<Wide> exactCount(const QRegularExpressionMatch& match) {
    const QString whole = match.captured(2);
    const QString fraction = match.captured(3) + match.captured(4);
    bool known = true;
    const qlonglong exponent = match.captured(5).isEmpty() ? 0 : match.captured(5).toLongLong(&known);
    if (!known)
        return std::nullopt;
    const qlonglong point = whole.size() + exponent + 4;  // digits before the point of the count
    constexpr int mostDigits = 35;
    const QString digits = whole + fraction;
    if (digits.size() > mostDigits || std::abs(exponent) > mostDigits || point > mostDigits)
        return std::nullopt;
    Wide count = 0;
    for (qlonglong at = 0; at < point; ++at)
        count = count * 10 + (at < digits.size() ? digits[at].digitValue() : 0);
    const QString rest = point >= digits.size()
                             ? QString()
                             : QString(std::max(0LL, -point), u'0') + digits.mid(std::max(0LL, point));
    QString half = u"5"_s;
    half = half.leftJustified(std::max<qsizetype>(rest.size(), 1), u'0');
    if (rest > half || (rest == half && count % 2 == 1))
        ++count;
    return match.captured(1) == u"-" ? -count : count;
}

void tryReading(const QString& text) {
    QString compact = text;
    compact.removeIf(
        [](QChar mark) { return mark == u' ' || mark == u'\t' || mark == u'\n' || mark == u'\r'; });
    const auto start = numberPattern().match(compact);
    const double leading = start.hasMatch() ? valueOf(start.captured()) : 0;
    require(leadingNumber(text) == std::clamp(leading, -largest, largest),
            "the leading number is the one in front");

    const auto whole = wholeNumber(trimmed(text));
    double value = 0;
    const bool read = fuzz::succeeds({error::typeMismatch, error::overflow}, [&] { value = toDouble(text); });
    require(read == (whole && std::isfinite(valueOf(trimmed(text)))), "a number is read, and nothing else");
    if (!read) {
        require(whole || format(text, u"#0.00"_s) == text, "no picture is put on what is no number");
        return;
    }
    require(value == valueOf(trimmed(text)), "the value is exactly the text's");
}

void tryMoney(const QString& text) {
    const auto whole = wholeNumber(trimmed(text));
    Currency money;
    const bool read =
        fuzz::succeeds({error::typeMismatch, error::overflow}, [&] { money = Currency::fromText(text); });
    require(!read || whole, "money is read from numbers alone");
    if (read)
        require(Currency::fromText(money.toText()) == money, "money as text reads back");
    if (!whole)
        return;
    if (const auto count = exactCount(*whole)) {
        const bool fits = *count >= std::numeric_limits<std::int64_t>::min() &&
                          *count <= std::numeric_limits<std::int64_t>::max();
        require(read == fits && (!fits || money.tenThousandths() == *count), "money is exact");
    }
    if (read) {
        require(toCurrency(QVariant::fromValue(money)) == money, "money as a value is the same");
        format(money, u"###,##0.00"_s);
        fuzz::succeeds({error::overflow}, [&] { formatCurrency(money); });
    }
}

template <class Integer>
void checkInteger(double value, Integer (*convert)(double)) {
    Integer found = 0;
    const bool read = fuzz::succeeds({error::overflow}, [&] { found = convert(value); });
    const double nearest = std::nearbyint(value);
    require(read == (nearest >= std::numeric_limits<Integer>::min() &&
                     nearest <= std::numeric_limits<Integer>::max()),
            "a whole number fits or is refused");
    require(!read || (found == nearest && std::abs(value - nearest) <= 0.5),
            "a whole number is the nearest one");
}

void tryWriting(double value) {
    if (!std::isfinite(value)) {
        require(!fuzz::succeeds({error::overflow}, [&] { numberText(value); }),
                "what is no number isn't written");
        return;
    }
    checkInteger<std::int16_t>(value, [](double number) { return toInt16(number); });
    checkInteger<std::int32_t>(value, [](double number) { return toInt32(number); });
    const QString text = numberText(value);
    double again = 0;
    if (!fuzz::succeeds({error::overflow}, [&] { again = toDouble(text); })) {
        require(std::abs(value) > largest * (1 - 1e-14), "a written number reads back");
        return;
    }
    require(std::abs(again - value) <= std::abs(value) * 5.1e-15 + std::numeric_limits<double>::denorm_min(),
            "fifteen digits are kept");
    require(numberText(again) == text, "writing again changes nothing");
    for (int decimals = 0; decimals <= 4; ++decimals) {
        const QString picture = decimals == 0 ? u"##0"_s : u"##0."_s + QString(decimals, u'0');
        const QString rounded = format(value, picture);
        require(std::abs(valueOf(rounded) - value) <= 0.5 * std::pow(10, -decimals) + std::abs(value) * 6e-15,
                "a rounded text is the nearest");
        require(rounded.section(u'.', 1).size() == decimals, "a rounded text has its decimals");
        require(format(value, u"#,"_s + picture).remove(u',') == rounded, "groups change no digit");
    }
}

/// What a NULL-proof reading gives: the number with a 0 in front, which no negative one survives.
void tryWithZero(const QString& text) {
    const auto money = [](Currency& value, const auto& reading) {
        return fuzz::succeeds({error::typeMismatch, error::overflow}, [&] { value = reading(); });
    };
    Currency value, expected;
    const bool read = money(value, [&] { return nullCurrency(QVariant(text)); });
    const bool readable = text.startsWith(u'-')
                              ? wholeNumber(trimmed(text)) && std::isfinite(valueOf(trimmed(text)))
                              : money(expected, [&] { return Currency::fromText(u'0' + text); });
    require(read == readable, "with a 0 in front a number is read, and nothing else");
    require(!read || value == expected, "the 0 in front changes no value");
}

void tryPictures(const QString& text) {
    const QString picture = text.section(u'|', 0, 0);
    const QString value = text.section(u'|', 1);
    const QString placed = formatPlaces(value, picture);
    require(placed.size() == picture.size() + std::max<qsizetype>(0, value.size() - picture.count(u'@')),
            "no character is lost");
    fuzz::succeeds({error::overflow}, [&] { format(value, picture); });
    format(Currency::fromTenThousandths(-125000), picture);
    format(QVariant(), picture);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray content = fuzz::bytes(data, size);
    const QString text = QString::fromUtf8(content);
    tryReading(text);
    tryMoney(text);
    tryWithZero(text);
    tryPictures(text);
    tryWriting(leadingNumber(text));
    double raw = 0;
    if (content.size() >= static_cast<qsizetype>(sizeof raw)) {
        std::memcpy(&raw, content.constData(), sizeof raw);
        tryWriting(raw);
        fuzz::succeeds({error::overflow}, [&] {
            const Currency money = Currency::fromDouble(raw);
            require(std::abs(money.toDouble() - raw) <= 0.00005001 + std::abs(raw) * 6e-15,
                    "money is the nearest");
        });
    }
    return 0;
}
