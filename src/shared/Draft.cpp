// The file of a draft: a JSON document. All that it holds are texts, but for the key.
#include "shared/Draft.h"

#include "platform/basic/Dates.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUuid>
#include <limits>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int fileVersion = 1;

QJsonObject objectOf(const DraftField& field) {
    QJsonObject object{{u"control"_s, field.control},
                       {u"label"_s, field.label},
                       {u"typed"_s, field.typed},
                       {u"replaced"_s, field.replaced}};
    if (field.cell)
        object.insert(u"cell"_s, true);
    return object;
}

std::optional<DraftField> fieldOf(const QJsonValue& value) {
    const QJsonObject object = value.toObject();
    if (!object.value("control"_L1).isString() || !object.value("typed"_L1).isString())
        return std::nullopt;
    return DraftField{object.value("control"_L1).toString(), object.value("label"_L1).toString(),
                      object.value("typed"_L1).toString(), object.value("replaced"_L1).toString(),
                      object.value("cell"_L1).toBool()};
}

}  // namespace

QString Draft::title() const {
    static const QRegularExpression letters(u"[\\p{L}\\p{N}]"_s);
    if (record.name.contains(letters))
        return record.name;
    for (const DraftField& field : fields) {
        if (field.typed.contains(letters))
            return field.typed.simplified().left(60);
    }
    return {};
}

QString newDraftId() { return QUuid::createUuid().toString(QUuid::Id128); }

bool isDraftId(const QString& text) {
    static const QRegularExpression form(u"^[0-9a-f]{32}\\z"_s);
    return form.match(text).hasMatch();
}

QByteArray draftFile(const Draft& draft) {
    QJsonArray fields;
    for (const DraftField& field : draft.fields)
        fields.append(objectOf(field));
    return QJsonDocument(QJsonObject{{u"version"_s, fileVersion},
                                     {u"database"_s, draft.database},
                                     {u"identity"_s, draft.identity},
                                     {u"table"_s, draft.record.table},
                                     {u"key"_s, draft.record.key},
                                     {u"guid"_s, draft.record.guid},
                                     {u"name"_s, draft.record.name},
                                     {u"time"_s, platform::storedDate(draft.time)},
                                     {u"fields"_s, fields}})
        .toJson();
}

std::optional<Draft> readDraftFile(const QByteArray& content) {
    const QJsonObject root = QJsonDocument::fromJson(content).object();
    Draft draft;
    draft.database = root.value("database"_L1).toString();
    draft.identity = root.value("identity"_L1).toString();
    draft.record.table = root.value("table"_L1).toString();
    draft.record.guid = root.value("guid"_L1).toString();
    draft.record.name = root.value("name"_L1).toString();
    draft.time = platform::fromStoredDate(root.value("time"_L1).toString());
    const int key = root.value("key"_L1).toInt(-1);
    if (root.value("version"_L1).toInt() != fileVersion || draft.record.table.isEmpty() ||
        !draft.time.isValid() || key < 0 || key > std::numeric_limits<std::int16_t>::max())
        return std::nullopt;
    draft.record.key = static_cast<std::int16_t>(key);
    for (const auto& value : root.value("fields"_L1).toArray()) {
        const auto field = fieldOf(value);
        if (!field)
            return std::nullopt;
        draft.fields.push_back(*field);
    }
    if (draft.fields.empty())
        return std::nullopt;
    return draft;
}

}  // namespace sorvanto
