// dbupdate.xml: the steps by which a database file grows from version to version.
//   <DatabaseUpdates>
//     <Step From="1" To="1.1">
//       <Statement>ALTER TABLE ...</Statement>
//     </Step>
//   </DatabaseUpdates>
// Versions are plain decimals with up to four places; each step leads upward, and one step at most starts
// from a version. Statements are the database engine's own, one to an element. A step is for files; one with Engine="server"
// is for records on a server.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

namespace sorvanto {

/// A version in ten-thousandths: "1.1" is 11000. -1 for a text that is none.
std::int64_t versionNumber(const QString& text);

struct UpdateStep {
    QString from;
    QString to;
    QStringList statements;
};

enum class UpdateOf { File, Server };

/// Reads the whole file, and gives the steps of that engine; throws general when it doesn't parse or breaks one of the rules
/// above.
std::vector<UpdateStep> readUpdateFile(const QString& path, UpdateOf engine = UpdateOf::File);

/// The steps that lead on from a version, in order; none when it is the newest.
std::vector<UpdateStep> stepsFrom(const std::vector<UpdateStep>& all, std::int64_t version);

}  // namespace sorvanto
