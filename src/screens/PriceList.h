// The proposals of a price list as rows, with a box to tick for each that can be taken.
#pragma once

#include "platform/widgets/ListCard.h"
#include "prices/PriceProposals.h"

#include <QAbstractTableModel>

namespace sorvanto {

/// What the rows are made of; lives as long as they are shown.
struct WeighedPrices {
    const PriceTable& table;
    const PriceColumns& columns;
    const PriceStock& stock;
    PriceProposals proposals;
};

class PriceRowsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column {
        tick,
        row,
        chemical,
        foundBy,
        calculation,
        oldCost,
        newCost,
        factor,
        oldAwp,
        newAwp,
        remark,
        columns
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// nullptr: no rows.
    void show(WeighedPrices* weighed);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int{columns};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Those that can't be taken stay as they are.
    void tickRows(const QModelIndexList& rows, bool on);

signals:
    void ticksChanged();

private:
    const PriceProposal& at(const QModelIndex& index) const;
    QString textOf(const PriceProposal& proposal, int column) const;
    QString chemicalText(const PriceProposal& proposal) const;
    bool isDoubtfulCell(const PriceProposal& proposal, int column) const;

    WeighedPrices* m_weighed = nullptr;
};

class PriceList : public platform::ListCard {
    Q_OBJECT

public:
    explicit PriceList(QWidget* parent = nullptr);

    PriceRowsModel& rows() { return *m_model; }

protected:
    void layOutColumns() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int calculationWidth() const;
    void tickChosen();

    PriceRowsModel* m_model;
};

}  // namespace sorvanto
