// The copies of one database in one folder: their names, their order, and which of them may go. A name tells the
// file's identity, a number that counts upward, and the moment: "sorvanto-3f2a9c01-0042-2026-03-07-140509.mdb".
// The number decides which copy is the newest, so that a wrong clock can't make a new copy the first to go.
#pragma once

#include <QDateTime>
#include <QString>
#include <vector>

namespace sorvanto {

struct KeptCopy {
    QString path;
    int number = 0;  ///< 0 for those of the first version, which bear the day alone
    QDateTime made;  ///< as the clock stood then
};

class CopyShelf {
public:
    /// identity: of the file that is copied; empty for one without.
    CopyShelf(const QString& folder, const QString& identity);

    /// Newest made first. Other databases' copies, and what a user or an update keeps there, are not among them.
    std::vector<KeptCopy> copies() const;
    /// Whether the newest made is of that day, as the clock stood. One of the first version tells of no database, so
    /// that it counts only where the database has no identity either.
    bool hasOneOf(const QDate& day) const;
    /// Of the newest made; 0 for none.
    int newestNumber() const;
    /// For the next one; newer than all here, and than the number of another shelf.
    QString pathFor(const QDateTime& now, int otherNumber = 0) const;
    /// Keeps the newest copy of each of the newest fourteen days, and of each of the newest twelve months.
    void thinOut() const;

private:
    QString m_folder;  ///< in this system's form
    bool m_known;      ///< which database it is
    QString m_start;   ///< how the names begin
};

}  // namespace sorvanto
