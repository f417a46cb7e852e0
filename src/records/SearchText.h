// What a search text asks for. A marker character names the column to search in; where it has to stand
// differs from class to class, and so does the marker of a lot.
#pragma once

#include "platform/data/Recordset.h"

#include <QString>

namespace sorvanto {

enum class SearchBy { Key, Code, Lot, Name };

/// The markers of one search: the one of the code (NDC or phone) and, where there is one, of the lot.
struct SearchMarkers {
    QChar code;
    QChar lot;
};

/// Judged by the first character alone. All markers of the kind found are taken out of the text.
SearchBy searchByFirst(QString& search, SearchMarkers markers);
/// Judged by the whole text; the code's marker goes before the lot's. Taken out as above.
SearchBy searchByAny(QString& search, SearchMarkers markers);

/// "WHERE ([column] Like 'text%')". The text goes in raw: an apostrophe in it breaks the statement.
QString likeFilter(const QString& column, const QString& text);

/// Asks which row is meant and stands the set on it; at its end when none was chosen. The key is the
/// first column of the set.
void chooseRow(const platform::RecordsetPtr& rows, const QString& keyName);

}  // namespace sorvanto
