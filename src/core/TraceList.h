// A list of rows, as the trace has them: a card with a title, a quiet remark at its right, and rows of texts.
#pragma once

#include <QFrame>
#include <QStringList>
#include <vector>

class QLabel;
class QTableView;

namespace sorvanto {

class TraceRowsModel;

struct TraceColumn {
    QString heading;
    int width = 0;  ///< pixels at 100 %; 0 takes what is left
    bool right = false;
};

class TraceList : public QFrame {
    Q_OBJECT

public:
    /// name: object name of the rows, also what screen readers call them until there is a title.
    explicit TraceList(const QString& name, QWidget* parent = nullptr);

    void setTitle(const QString& title, const QString& remark = {});
    void setRemark(const QString& remark);
    void setColumns(std::vector<TraceColumn> columns);
    /// quiet: so many rows at the end are drawn as remarks. Nothing is chosen afterwards.
    void setRows(std::vector<QStringList> rows, int quiet = 0);

    int rowCount() const;
    void choose(int row);
    /// Places of the chosen rows, from the top.
    std::vector<int> chosen() const;
    /// Gives each row a box in front, all ticked, and chooses the first; the mouse in the first column changes one, the space
    /// bar those that are chosen.
    void setTicked();
    /// Places of the ticked rows, from the top.
    std::vector<int> ticked() const;

signals:
    void choiceChanged();
    /// Enter or a double click.
    void opened(int row);
    void tickChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOutColumns();
    int contentWidth(int column) const;
    void toggle(const std::vector<int>& rows);

    std::vector<TraceColumn> m_columns;
    TraceRowsModel* m_model;
    QLabel* m_title;
    QLabel* m_remark;
    QTableView* m_view;
};

}  // namespace sorvanto
