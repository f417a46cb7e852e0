// A patient's history is blanked on request.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>

namespace sorvanto {

struct ForgetResult {
    std::int64_t rows = 0;
    int drafts = 0;
};

/// Takes names and values out of each row of the history that is of the patient or of a prescription of his, and their salt, so
/// that they can't be guessed either; who changed something and when stays, and the chain stays provable. Removes texts of the patient
/// that were typed and not saved from the drafts in these program folders. That this was done is written down. Throws
/// permissionDenied when a program has the file open, and for an account that does not own the tables of a server; general for a file without history and when there is nothing to blank.
ForgetResult forgetPatient(const QString& location, std::int64_t patient, const QStringList& programFolders);

}  // namespace sorvanto
