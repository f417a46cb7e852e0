#include "platform/widgets/Rows.h"

#include <QHeaderView>
#include <QTableView>

namespace platform {

void setUpRows(QTableView& view) {
    view.setShowGrid(false);
    view.setWordWrap(false);
    view.setTabKeyNavigation(false);
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.verticalHeader()->setDefaultSectionSize(rowPitch);
    view.horizontalHeader()->setFixedHeight(headPitch);
    view.horizontalHeader()->setHighlightSections(false);
}

}  // namespace platform
