// Small pieces that the record classes' statements and questions have in common.
#pragma once

#include "platform/basic/RuntimeError.h"
#include "platform/data/Recordset.h"

#include <QString>
#include <QVariant>
#include <initializer_list>

namespace sorvanto {

/// A column and the English text whose translation is its name in the result.
struct AliasedColumn {
    const char* column;
    const char* alias;
};
/// Each column by the pattern, %1 being the column and %2 the translated alias.
QString aliasedColumns(const QString& pattern, std::initializer_list<AliasedColumn> columns);

/// A text typed by the user as it stands between apostrophes: apostrophes doubled, then trimmed.
QString userText(const QString& text);

/// The key that the last INSERT gave.
QVariant lastIdentity();

/// A client-side set that writes its edits to the tables: ingredient, batch and prescription lists.
/// orderWithin: see Recordset.
platform::RecordsetPtr openEditableList(const QString& statement, const QString& orderWithin = {});

/// Asks with No as the default; true on Yes. The question, in the user's language, has places for the word
/// "Delete" and for the name: "%1 %2?".
bool confirmedDeletion(const QString& question, const QString& name);

/// Whether the file refused a statement since other rows refer to the one concerned.
bool isRefusedRelation(const platform::RuntimeError& failure);
/// Tells that a record is in use and stays: its name and below it the translated reason.
void tellRefusal(const QString& name, const QString& reason);

}  // namespace sorvanto
