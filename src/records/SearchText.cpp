// The marker rules of the searches.
#include "records/SearchText.h"

#include "platform/basic/RuntimeError.h"
#include "records/clsSearch.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

template <class Holds>
SearchBy searchBy(QString& search, SearchMarkers markers, Holds holds) {
    if (search.isEmpty())
        return SearchBy::Key;
    for (const auto& [marker, kind] :
         {std::pair(markers.code, SearchBy::Code), std::pair(markers.lot, SearchBy::Lot)}) {
        if (!marker.isNull() && holds(marker)) {
            search.remove(marker);
            return kind;
        }
    }
    return SearchBy::Name;
}

}  // namespace

SearchBy searchByFirst(QString& search, SearchMarkers markers) {
    return searchBy(search, markers, [&](QChar marker) { return search.startsWith(marker); });
}

SearchBy searchByAny(QString& search, SearchMarkers markers) {
    return searchBy(search, markers, [&](QChar marker) { return search.contains(marker); });
}

QString likeFilter(const QString& column, const QString& text) {
    return u"WHERE (["_s + column + u"] Like '"_s + text + u"%')"_s;
}

void chooseRow(const platform::RecordsetPtr& rows, const QString& keyName) {
    const std::int32_t key = sharedSearch().searchList(rows, 0, 0);
    platform::deref(rows).find(keyName + u" = "_s + QString::number(key));
}

}  // namespace sorvanto
