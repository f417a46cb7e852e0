// Brings the database file up to date by the steps of dbupdate.xml. All steps together are one transaction,
// after a checked copy of the file has been put into backups/; so the file is either as it was or whole.
#pragma once

#include "platform/data/Connection.h"

#include <QString>
#include <QVariant>

namespace sorvanto {

class DatabaseUpdater {
public:
    virtual ~DatabaseUpdater() = default;

    /// Whose database it is: written to the history of updates. The answer stays empty.
    virtual void IdentifyStore(const QString& first, const QString& second, const QString& storeName,
                               const QString& phone, QVariant& answer);

    /// version: in, what the database says of itself; out, what it is now. applied: whether it is to be
    /// written there. A closed connection, a missing file, a file without a step for the version and records on a
    /// server change nothing. Throws on a file that breaks its rules and on a refused statement; nothing is changed then.
    ///
    /// The steps that are done are also marked in the file itself, in the same transaction. A program that
    /// ended before it could write the version is thus told it again, instead of the steps being run twice.
    virtual void ApplyUpdates(const platform::ConnectionPtr& connection, const QString& updateFilePath,
                              QString& version, bool& applied);

private:
    void writeHistory(const QString& from, const QString& to) const;

    QString m_storeName, m_phone;
};

}  // namespace sorvanto
