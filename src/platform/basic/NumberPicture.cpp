// One section of a number picture: taking it apart, and filling its places.
#include "platform/basic/NumberPicture.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Decimal.h"

#include <utility>

namespace platform {
namespace {

constexpr int moneyDecimals = 4;

bool isPlace(QChar mark) { return mark == u'0' || mark == u'#'; }

constexpr std::uint64_t powerOfTen(int power) {
    std::uint64_t product = 1;
    while (power-- > 0)
        product *= 10;
    return product;
}

}  // namespace

NumberPicture::NumberPicture(const QString& section) {
    qsizetype first = 0;
    while (first < section.size() && !isPlace(section.at(first)))
        ++first;
    m_hasPlaces = first < section.size();
    if (!m_hasPlaces) {
        m_prefix = section;
        return;
    }
    qsizetype end = first;
    bool point = false;
    while (end < section.size() &&
           (isPlace(section.at(end)) || section.at(end) == u',' || (section.at(end) == u'.' && !point))) {
        point = point || section.at(end) == u'.';
        ++end;
    }
    while (section.at(end - 1) == u',')
        --end;
    // ".00": the point in front is the decimal point where the places have no other one.
    if (!point && first > 0 && section.at(first - 1) == u'.')
        --first;
    m_prefix = section.left(first);
    m_suffix = section.mid(end);
    readPlaces(section.mid(first, end - first));
}

void NumberPicture::readPlaces(const QString& places) {
    bool always = false;
    for (const QChar mark : places) {
        if (mark == u'.') {
            m_point = true;
        } else if (mark == u',') {
            m_grouped = m_grouped || !m_point;
        } else if (m_point) {
            ++m_decimals;
            if (mark == u'0')
                m_leastDecimals = m_decimals;
        } else {
            always = always || mark == u'0';
            m_leastWhole += always ? 1 : 0;
        }
    }
}

bool NumberPicture::roundsToZero(Decimal value) const {
    value.round(m_decimals, Decimal::Tie::away);
    return value.isZero();
}

QString NumberPicture::magnitude(Decimal value) const {
    value.round(m_decimals, Decimal::Tie::away);
    QByteArray whole = value.integerDigits();
    if (whole == "0")
        whole.clear();
    return assembled(std::move(whole), value.fractionDigits(m_decimals));
}

/// In units of the last place that shows, half of one away from nothing. For pictures with no more places than money has.
std::uint64_t NumberPicture::rounded(Currency value) const {
    const auto bits = static_cast<std::uint64_t>(value.tenThousandths());
    const std::uint64_t unit = powerOfTen(moneyDecimals - m_decimals);
    return ((value.tenThousandths() < 0 ? 0 - bits : bits) + unit / 2) / unit;
}

bool NumberPicture::roundsToZero(Currency value) const {
    return m_decimals <= moneyDecimals ? rounded(value) == 0 : value == Currency();
}

QString NumberPicture::magnitude(Currency value) const {
    if (m_decimals > moneyDecimals)
        return magnitude(*Decimal::fromText(value.toText().toLatin1()));
    const std::uint64_t count = rounded(value), ofOne = powerOfTen(m_decimals);
    const std::uint64_t whole = count / ofOne;
    return assembled(whole == 0 ? QByteArray() : QByteArray::number(qulonglong{whole}),
                     m_decimals == 0
                         ? QByteArray()
                         : QByteArray::number(qulonglong{count % ofOne}).rightJustified(m_decimals, '0'));
}

QString NumberPicture::assembled(QByteArray whole, QByteArray fraction) const {
    whole = whole.rightJustified(m_leastWhole, '0');
    if (m_grouped) {
        for (qsizetype at = whole.size() - 3; at > 0; at -= 3)
            whole.insert(at, ',');
    }
    while (fraction.size() > m_leastDecimals && fraction.endsWith('0'))
        fraction.chop(1);
    QString text = m_prefix;
    text.reserve(m_prefix.size() + whole.size() + 1 + fraction.size() + m_suffix.size());
    text += QLatin1StringView(whole);
    if (m_point) {
        text += u'.';
        text += QLatin1StringView(fraction);
    }
    return text += m_suffix;
}

}  // namespace platform
