// Prices from a supplier's list: how the file is read and which column is what, what would change, and Take. Nothing is
// written before that.
//   PriceWindow.cpp   reading, weighing, taking   PriceWindow_parts.cpp   the window itself
#pragma once

#include "prices/PriceFile.h"
#include "prices/PriceTaking.h"
#include "screens/PriceList.h"

#include <QDialog>
#include <array>
#include <memory>
#include <optional>

class QComboBox;
class QGridLayout;
class QLabel;
class QLayout;
class QPushButton;

namespace sorvanto {

class PriceWindow : public QDialog {
    Q_OBJECT

public:
    /// file: one without a fault. path: of the file, for its name.
    PriceWindow(platform::ConnectionPtr connection, PriceFile file, const QString& path,
                QWidget* parent = nullptr);

    /// How many prices were taken.
    int taken() const { return m_taken; }

private:
    void buildWindow();
    QLayout* fileRow();
    QLayout* columnsRow();
    QLayout* bottomRow();
    void orderStops();
    void fillColumnBoxes();
    void fillMarkBox(PriceField field);
    void guessSeparator();
    void read();
    void chooseColumn(PriceField field, int column);
    void chooseMark(PriceField field, int index);
    void weigh();
    /// Over what others have changed meanwhile, and says so.
    void weighAnew();
    /// What is still to be said by the user before the rows can be weighed; empty for nothing.
    QString toBeSaid() const;
    void say(const QString& message);
    void showTicks();
    Taken write();
    void take();

    platform::ConnectionPtr m_connection;
    PriceFile m_file;
    QString m_name;  ///< of the file
    PriceTable m_table;
    PriceColumns m_columns;
    std::optional<PriceStock> m_stock;
    std::unique_ptr<WeighedPrices> m_weighed;
    QString m_trouble;  ///< why there are no rows
    int m_taken = 0;

    QComboBox* m_sheet;
    QComboBox* m_encoding;
    QComboBox* m_separator;
    std::array<QComboBox*, priceFields> m_columnBoxes{};
    std::array<QComboBox*, priceFields> m_markBoxes{};  ///< none for a field that is no number
    QLabel* m_message;
    PriceList* m_list;
    QLabel* m_ticked;
    QPushButton* m_take;
};

}  // namespace sorvanto
