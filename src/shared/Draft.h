// A draft: what was typed into the boxes of one record and not saved, with all that is needed to find the
// record again and to tell whether it is still the one that the text was meant for. One file a draft.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace sorvanto {

struct DraftField {
    QString control{};  ///< name of the box or grid
    QString label{};    ///< as the user knows it, in the language of the moment
    QString typed{};
    QString replaced{};  ///< what the box showed before
    bool cell = false;   ///< half-typed in a grid: to be read and copied only

    bool operator==(const DraftField&) const = default;
};

/// The record on view on a screen.
struct DraftRecord {
    QString table{};
    std::int16_t key = 0;
    QString guid{};  ///< of a batch its lot and moment; empty where there is nothing of the kind
    QString name{};

    bool operator==(const DraftRecord&) const = default;
};

struct Draft {
    QString id;        ///< 32 digits, the name of its file
    QString database;  ///< path of the file
    QString identity;  ///< of the database, empty where it has none
    DraftRecord record;
    QDateTime time;
    std::vector<DraftField> fields;

    // Not in the file.
    bool offered = false;  ///< no longer in any box: to be brought back or discarded
    bool earlier = false;  ///< left by an earlier run of the program

    /// The record's name; for one without a name the first text that was typed; empty where nothing says
    /// anything.
    QString title() const;
};

QString newDraftId();
/// Whether a text can be the id of a draft.
bool isDraftId(const QString& text);

QByteArray draftFile(const Draft& draft);
/// Nothing when the content is no whole draft. The id is not in the content.
std::optional<Draft> readDraftFile(const QByteArray& content);

}  // namespace sorvanto
