#include "core/CopyShelf.h"

#include "platform/basic/Paths.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int daysKept = 14;
constexpr int monthsKept = 12;
constexpr qsizetype digitsOfIdentity = 8;

const QString moment = u"yyyy-MM-dd-HHmmss"_s;

}  // namespace

CopyShelf::CopyShelf(const QString& folder, const QString& identity)
    : m_folder(platform::platformPath(folder)), m_known(!identity.isEmpty()),
      m_start(identity.isEmpty() ? u"sorvanto-"_s : u"sorvanto-%1-"_s.arg(identity.left(digitsOfIdentity))) {}

std::vector<KeptCopy> CopyShelf::copies() const {
    const QRegularExpression own(u"^%1(\\d{4,})-(\\d{4}-\\d\\d-\\d\\d-\\d{6})\\.mdb$"_s.arg(m_start));
    static const QRegularExpression first(u"^sorvanto-(\\d{4}-\\d\\d-\\d\\d)\\.mdb$"_s);
    std::vector<KeptCopy> found;
    const QDir folder(m_folder);
    for (const QString& name : folder.entryList({u"sorvanto-*.mdb"_s}, QDir::Files, QDir::Name)) {
        if (const auto named = own.match(name); named.hasMatch())
            found.push_back({folder.filePath(name), named.captured(1).toInt(),
                             QDateTime::fromString(named.captured(2), moment)});
        else if (const auto dated = first.match(name); dated.hasMatch())
            found.push_back(
                {folder.filePath(name), 0, QDate::fromString(dated.captured(1), Qt::ISODate).startOfDay()});
    }
    std::stable_sort(found.begin(), found.end(), [](const KeptCopy& one, const KeptCopy& other) {
        return one.number != other.number ? one.number > other.number : one.made > other.made;
    });
    return found;
}

bool CopyShelf::hasOneOf(const QDate& day) const {
    const auto kept = copies();
    return !kept.empty() && (kept.front().number > 0 || !m_known) && kept.front().made.date() == day;
}

int CopyShelf::newestNumber() const {
    const auto kept = copies();
    return kept.empty() ? 0 : kept.front().number;
}

QString CopyShelf::pathFor(const QDateTime& now, int otherNumber) const {
    const int number = std::max(newestNumber(), otherNumber) + 1;
    return u"%1/%2%3-%4.mdb"_s.arg(m_folder, m_start).arg(number, 4, 10, '0'_L1).arg(now.toString(moment));
}

void CopyShelf::thinOut() const {
    QSet<QString> days;
    QSet<QString> months;
    for (const KeptCopy& copy : copies()) {
        // One of the first version may be of another database, and no copy of this one takes its place.
        const QString day =
            copy.made.toString(u"yyyy-MM-dd"_s) + (m_known && copy.number == 0 ? u"?"_s : QString());
        const QString month = day.left(7);
        const bool ofItsDay = !days.contains(day) && days.size() < daysKept;
        const bool ofItsMonth = !months.contains(month) && months.size() < monthsKept;
        if (ofItsDay)
            days << day;
        if (ofItsMonth)
            months << month;
        if (!ofItsDay && !ofItsMonth)
            QFile::remove(copy.path);
    }
}

}  // namespace sorvanto
