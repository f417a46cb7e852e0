// One section of a number picture: taking it apart, and filling its places.
#include "platform/basic/NumberPicture.h"

#include "platform/basic/Decimal.h"

namespace platform {
namespace {

bool isPlace(QChar mark) { return mark == u'0' || mark == u'#'; }

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
    whole = whole.rightJustified(m_leastWhole, '0');
    if (m_grouped) {
        for (qsizetype at = whole.size() - 3; at > 0; at -= 3)
            whole.insert(at, ',');
    }
    QByteArray fraction = value.fractionDigits(m_decimals);
    while (fraction.size() > m_leastDecimals && fraction.endsWith('0'))
        fraction.chop(1);
    QString text = m_prefix + QString::fromLatin1(whole);
    if (m_point)
        text += u'.' + QString::fromLatin1(fraction);
    return text + m_suffix;
}

}  // namespace platform
