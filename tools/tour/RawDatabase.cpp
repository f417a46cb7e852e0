// Each failure ends the tour.
#include "RawDatabase.h"

#include "Stop.h"
#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tour {

RawDatabase::RawDatabase(const QString& path) {
    try {
        m_reader = std::make_unique<platform::sqlite::FileReader>(path);
    } catch (const platform::RuntimeError&) {
        require(false, u"the database %1 can't be read."_s.arg(path));
    }
}

QList<QStringList> RawDatabase::rows(const QString& statement) const {
    try {
        return m_reader->rows(statement);
    } catch (const platform::RuntimeError& failure) {
        require(false, u"the file refuses \"%1\": %2"_s.arg(statement, failure.description()));
    }
    return {};
}

QString RawDatabase::value(const QString& statement) const {
    const auto all = rows(statement);
    require(all.size() == 1, u"\"%1\" gives %2 rows instead of one."_s.arg(statement).arg(all.size()));
    return all.first().first();
}

}  // namespace tour
