// The name that is proposed for a file of a report: what it is, the record, and the day.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace sorvanto {

/// "Worksheet Magic Mouthwash 240 MLS 2026-11-21", of an English title that is translated, and texts of the record.
/// Without an ending; every file system takes it, and it is no longer than a line.
QString reportFileName(const char* title, const QStringList& record, const QDate& day);
/// The same for a range of days: "Log Report Magic Mouthwash 2026-10-21 2026-11-21".
QString reportFileName(const char* title, const QStringList& record, const QDate& first, const QDate& last);

}  // namespace sorvanto
