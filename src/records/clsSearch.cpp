// Choosing one row of a result set. Each step goes on after a failure of the one before.
#include "records/clsSearch.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/OwnerWindow.h"
#include "records/SearchColumns.h"
#include "records/TwinColumns.h"
#include "records/frmSearchRS.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <QScreen>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

constexpr int twipsPerPixel = 15;

/// The list's columns from the set's fields; a field that can't be shaped keeps the defaults.
std::vector<GridColumn> searchColumns(const ResumeNext& step, const Recordset& rows,
                                      const ListMeasure& measure) {
    std::vector<GridColumn> columns(static_cast<std::size_t>(rows.fieldCount()));
    for (int field = 0; field < rows.fieldCount(); ++field)
        step(
            [&] { columns[static_cast<std::size_t>(field)] = searchColumn(rows.fieldInfo(field), measure); });
    return columns;
}

void place(frmSearchRS& form, std::int32_t X, std::int32_t Y) {
    const QRect screen = form.screen()->geometry();
    form.move(screen.left() + searchPlace(X / twipsPerPixel, form.width(), screen.width()),
              screen.top() + searchPlace(Y / twipsPerPixel, form.height(), screen.height()));
}

}  // namespace

std::int32_t clsSearch::searchList(const RecordsetPtr& rows, std::int32_t X, std::int32_t Y) {
    const ResumeNext step(u"clsSearch:ShowList"_s);
    std::int64_t count = 0;
    std::int32_t key = 0;
    step([&] { count = deref(rows).recordCount(); });
    if (count == 0) {
        step([&] { MsgBox(u"No Records"_s); });
        return 0;
    }
    if (count == 1) {
        step([&] { key = toInt32(rows->value(0)); });
        return key;
    }
    frmSearchRS form(ownerWindow());
    step([&] { form.setRows(rows); });
    step([&] {
        std::vector<GridColumn> columns = searchColumns(step, *rows, form.measure());
        step([&] { addTwinColumns(columns, rows, form.measure()); });
        form.setColumns(std::move(columns));
    });
    step([&] { form.fit(); });
    step([&] { place(form, X, Y); });
    step([&] { form.setWindowTitle(m_formCaption); });
    step([&] { asker().showModal(form, [&] { form.exec(); }); });
    m_succeed = form.Succeed();
    step([&] { key = form.ID().isValid() ? toInt32(form.ID()) : 0; });
    m_id = key;
    return key;
}

clsSearch& sharedSearch() {
    std::shared_ptr<clsSearch>& search = basMain::Search;
    if (!search)
        search = std::make_shared<clsSearch>();
    return *search;
}

}  // namespace sorvanto
