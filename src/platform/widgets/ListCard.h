// A card with a title, a quiet remark at its right, and a list of rows below them.
#pragma once

#include <QFrame>

class QAbstractItemModel;
class QLabel;
class QTableView;

namespace platform {

class ListCard : public QFrame {
public:
    /// name: object name of the rows. fewestRows: so many are always seen.
    ListCard(const QString& name, int fewestRows, QWidget* parent = nullptr);

    /// Screen readers call the rows by the title.
    void setTitle(const QString& title, const QString& remark = {});
    void setRemark(const QString& remark);

protected:
    /// Once, by the constructor of the list. The model stays the caller's.
    void setModel(QAbstractItemModel& model);
    QTableView& view() const { return *m_view; }
    QLabel& remarkLabel() const { return *m_remark; }
    /// Called when the room for the columns or the type has changed.
    virtual void layOutColumns() {}

    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QLabel* m_title;
    QLabel* m_remark;
    QTableView* m_view;
};

}  // namespace platform
