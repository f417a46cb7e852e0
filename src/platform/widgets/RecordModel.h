// The rows of a result set as a table model: formats values, takes edits, and follows the set's changes.
#pragma once

#include "platform/widgets/RecordGrid.h"

#include <QAbstractTableModel>
#include <QTimer>

namespace platform {

class RecordModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum class Kind { Text, Number, Flag, Date };

    explicit RecordModel(QObject* parent);
    ~RecordModel() override;

    void setColumns(std::vector<GridColumn> columns);
    const std::vector<GridColumn>& columns() const { return m_columns; }
    void setShownCaption(int column, const QString& caption);
    QString shownCaption(int column) const { return m_captions.at(static_cast<std::size_t>(column)); }
    void setNumberFormat(int column, const QString& picture);
    void setRows(const RecordsetPtr& rows);
    const RecordsetPtr& rows() const { return m_rows; }
    void setAllowUpdate(bool on) { m_allowUpdate = on; }
    bool allowUpdate() const { return m_allowUpdate; }

    Kind kind(int column) const { return m_fields.at(static_cast<std::size_t>(column)).kind; }
    /// Characters that a column of text holds; 0 for any number.
    int definedSize(int column) const { return m_fields.at(static_cast<std::size_t>(column)).size; }
    /// As the cell shows it.
    QString shown(int row, int column) const;
    QVariant value(int row, int column) const;
    /// Makes a row of the grid the set's current one; false when the set refused to leave its row.
    bool makeCurrent(int row);
    /// Whether the last edit was taken by the set and the table.
    bool lastEditTaken() const { return m_lastEditTaken; }
    /// Tells the user why an edit was refused.
    void refuse(const QString& reason);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    /// The set's current row, its values or its rows changed from elsewhere.
    void setChanged();
    void editFailed();

private:
    struct Field {
        int position = -1;  // in the set; -1 when it lacks the field
        Kind kind = Kind::Text;
        int size = 0;
    };

    void findFields();
    void follow();
    void askAgain() const;
    bool write(int row, int column, const QVariant& value);

    std::vector<GridColumn> m_columns;
    std::vector<QString> m_captions;
    std::vector<Field> m_fields;
    RecordsetPtr m_rows;
    int m_callback = 0;
    int m_count = 0;
    mutable QTimer m_again;  ///< runs once a row was refused in a wait
    bool m_allowUpdate = false, m_ownChange = false, m_telling = false, m_lastEditTaken = true;
};

}  // namespace platform
