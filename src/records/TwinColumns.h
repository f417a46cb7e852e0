// What tells apart records that look alike in a search: columns of their table beside those of the search.
#pragma once

#include "records/SearchColumns.h"

#include <vector>

namespace sorvanto {

/// A search in which two chemicals look the same gets their lot, units and supplier as well; any other keeps its
/// columns. The set and its statement stay as they are. Throws as Connection::execute.
void addTwinColumns(std::vector<platform::GridColumn>& columns, const platform::RecordsetPtr& rows,
                    const ListMeasure& measure);

}  // namespace sorvanto
