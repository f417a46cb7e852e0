// The file itself.
#include "DataStore.h"

using namespace Qt::StringLiterals;

namespace support {
namespace {

class FileStore : public DataStore {
public:
    explicit FileStore(const QString& path) : m_path(path) {}
    QString location() const override { return m_path; }
    Rows run(const QString& statements) override { return runSql(m_path, statements); }
    void takeAll() override { run(u"BEGIN EXCLUSIVE; COMMIT"_s); }
    void breakTable(const QString& table) override {
        run(u"CREATE TRIGGER no BEFORE UPDATE ON %1 BEGIN SELECT RAISE(ABORT, 'no'); END"_s.arg(table));
    }
    QString otherWays() const override { return u"PRAGMA reverse_unordered_selects = ON"_s; }

private:
    QString m_path;
};

}  // namespace

std::unique_ptr<DataStore> openStore(const QString& file) { return std::make_unique<FileStore>(file); }

}  // namespace support
