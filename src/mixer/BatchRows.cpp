// As JSON: unlike XML it holds every character that a record may hold.
#include "mixer/BatchRows.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QJsonObject unchangeable(QJsonObject row) {
    for (const auto column : {"log_Initials"_L1, "log_Verified"_L1, "log_Notes"_L1})
        row.remove(column);
    return row;
}

}  // namespace

bool BatchRows::isSameBatch(const BatchRows& other) const {
    return unchangeable(row) == unchangeable(other.row);
}

QString BatchRows::toText() const {
    QJsonObject both{{u"Log"_s, row}, {u"LogChem"_s, lines}};
    if (!history.isEmpty())
        both.insert(u"History"_s, history);
    return QString::fromUtf8(QJsonDocument(both).toJson(QJsonDocument::Compact));
}

BatchRows BatchRows::fromText(const QString& text) {
    const QJsonObject both = QJsonDocument::fromJson(text.toUtf8()).object();
    return {both.value(u"Log"_s).toObject(), both.value(u"LogChem"_s).toArray(),
            both.value(u"History"_s).toString()};
}

}  // namespace sorvanto
