// A list of texts in a card, as the trace has them.
#pragma once

#include "platform/widgets/ListCard.h"

#include <QStringList>
#include <cstddef>
#include <functional>
#include <vector>

namespace sorvanto {

class TraceRowsModel;

struct TraceColumn {
    QString heading;
    int width = 0;  ///< pixels at 100 %; 0 takes what is left
    bool right = false;
};

class TraceList : public platform::ListCard {
    Q_OBJECT

public:
    /// name: object name of the rows.
    explicit TraceList(const QString& name, QWidget* parent = nullptr);

    void setColumns(std::vector<TraceColumn> columns);
    /// quiet: so many rows at the end are drawn as remarks. Nothing is chosen afterwards.
    void setRows(std::vector<QStringList> rows, int quiet = 0);
    /// Behind those that are there; what is chosen stays so.
    void addRows(std::vector<QStringList> rows);
    /// The same where rows are many: each is asked for when it is looked at, until others are set.
    using RowTexts = std::function<QStringList(std::size_t row)>;
    void setRows(std::size_t count, RowTexts texts, int quiet = 0);
    void clear() { setRows({}); }

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
    void layOutColumns() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void toggle(const std::vector<int>& rows);

    std::vector<TraceColumn> m_columns;
    TraceRowsModel* m_model;
};

}  // namespace sorvanto
