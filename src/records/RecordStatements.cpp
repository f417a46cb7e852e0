// Common pieces of the record classes.
#include "records/RecordStatements.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Text.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

QString aliasedColumns(const QString& pattern, std::initializer_list<AliasedColumn> columns) {
    QString text;
    for (const AliasedColumn& column : columns)
        text += pattern.arg(QLatin1String(column.column), translated(QLatin1String(column.alias)));
    return text;
}

QString userText(const QString& text) { return trimmed(doubledApostrophes(text)); }

QVariant lastIdentity() {
    const RecordsetPtr identity = Recordset::create();
    identity->open(u"SELECT @@IDENTITY;"_s, openDB());
    return identity->value(0);
}

RecordsetPtr openEditableList(const QString& statement, const QString& orderWithin) {
    RecordsetPtr list = Recordset::create();
    list->setOrderWithin(orderWithin);
    list->open(statement, openDB(), LockType::Optimistic, CursorLocation::Client);
    return list;
}

bool confirmedDeletion(const QString& question, const QString& name) {
    return MsgBox(question.arg(translated(u"Delete"_s), name), deletionStyle) == Answer::Yes;
}

bool isRefusedRelation(const RuntimeError& failure) { return failure.number() == error::general; }

void tellRefusal(const QString& name, const QString& reason) {
    MsgBox(name + u"\r\n"_s + translated(reason), {}, u""_s);
}

}  // namespace sorvanto
