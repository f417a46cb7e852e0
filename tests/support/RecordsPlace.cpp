#include "RecordsPlace.h"

using namespace Qt::StringLiterals;

namespace support {
namespace {

RecordsPlace* chosen = nullptr;

}  // namespace

RecordsPlace& RecordsPlace::current() {
    static RecordsPlace file;
    return chosen ? *chosen : file;
}

void RecordsPlace::setCurrent(RecordsPlace& place) { chosen = &place; }

void RecordsPlace::refuse(const QString& file, const Refusal& refusal) {
    run(file,
        u"CREATE TRIGGER refuse BEFORE %1 ON %2 WHEN NEW.%3 = '%4' BEGIN SELECT RAISE(ABORT, 'no room'); END"_s
            .arg(refusal.event, refusal.table, refusal.column, refusal.value));
}

void RecordsPlace::doAfterInsert(const QString& file, const QString& table, const QString& statement) {
    run(file, u"CREATE TRIGGER meddle AFTER INSERT ON %1 BEGIN %2; END"_s.arg(table, statement));
}

void RecordsPlace::unlockHistory(const QString& file) {
    run(file, u"DROP TRIGGER History_Sealed; DROP TRIGGER History_Kept"_s);
}

}  // namespace support
