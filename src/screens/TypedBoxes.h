// What a form's boxes show against what the program put there last. Boxes are known by their names, as for
// locking: "txt" and "cbo", and beside these the settings of the mix ("lblSet", "lst") and the open cell of
// a grid ("grd").
#pragma once

#include "shared/Draft.h"

#include <QObject>
#include <vector>

class QLineEdit;
class QWidget;

namespace platform {
class RecordGrid;
}

namespace sorvanto {

class TypedBoxes : public QObject {
    Q_OBJECT

public:
    /// The form outlives this object, or goes with it.
    explicit TypedBoxes(QWidget& form);

    /// What is shown now is the program's. The first call looks up the boxes.
    void settle();
    /// Until the next settle nothing counts as typed: the boxes are being filled.
    void unsettle() { m_settled = false; }
    bool settled() const { return m_settled; }
    /// Typed boxes, or an open cell.
    bool any() const;
    /// The boxes that show something else than the program put there.
    std::vector<DraftField> typed() const;
    /// All boxes with what they show, as typed and as replaced alike.
    std::vector<DraftField> shown() const;
    /// The half-typed cell, if one is open.
    std::vector<DraftField> openCell() const;
    /// Closes an open cell without writing it.
    void dropOpenCell();
    /// What that box shows; empty when there is none of that name.
    QString shown(const QString& control) const;
    /// The text still counts as typed over what it replaced.
    void stillTyped(const DraftField& field);
    /// Types the texts into their boxes; cells are left out.
    void type(const std::vector<DraftField>& fields);

signals:
    /// A box may show something else now.
    void edited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Box {
        QWidget* widget;
        QString before;
    };

    void findBoxes();
    void follow(QWidget& control);
    QString labelOf(const QWidget& box) const;
    QLineEdit* editorOf(const platform::RecordGrid& grid) const;
    DraftField cellField(const platform::RecordGrid& grid, const QLineEdit& editor) const;

    QWidget& m_form;
    std::vector<Box> m_boxes;
    std::vector<platform::RecordGrid*> m_grids;
    bool m_settled = false;
};

}  // namespace sorvanto
