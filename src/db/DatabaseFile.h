// Makes database files of the control panel: empty ones and the sample pharmacy.
#pragma once

#include <QString>

namespace sorvanto {

/// Most rows that a table can hold, since keys have 16 bits.
inline constexpr int mostRows = 32767;

/// A new file with all tables and no records, readable by its owner alone. Throws permissionDenied when
/// the file exists; a failure leaves no file behind, and a kill none under that name.
void createDatabase(const QString& path);

/// As createDatabase, with the sample pharmacy. rows: fill every table up to that count (0: as it is).
void createSample(const QString& path, int rows = 0);

/// All statements that make a new file with all tables and no records.
QByteArray newFileStatements();
/// Those of an empty database of the first version.
QByteArray schemaStatements();
/// Those that make one keep its history.
QByteArray historyStatements();

}  // namespace sorvanto
