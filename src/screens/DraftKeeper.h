// Keeps what is typed on one screen as drafts: the text in the boxes within a second of the first key, and
// what the program replaces as a draft on offer. Saved and cancelled text leaves none.
#pragma once

#include "screens/TypedBoxes.h"
#include "shared/Draft.h"

#include <QObject>
#include <QTimer>

namespace sorvanto {

struct Context;

class DraftStore;

class DraftKeeper : public QObject {
    Q_OBJECT

public:
    /// Without a store nothing is written.
    DraftKeeper(const Context& context, QWidget& form);
    void keepIn(DraftStore& store);

    bool typed() const { return m_boxes.any(); }
    /// The record's values are about to be put into the boxes.
    void refillBegins();
    /// They stand there. Typed text that is gone is offered; text that the record itself shows again still
    /// counts as typed.
    void refilled(const DraftRecord& record);
    /// Saved, or cancelled by the user: what the boxes show is nobody's typing any more.
    void settled(const DraftRecord& record);
    /// The user does not want it saved, and it still stands in its boxes: what is kept of it goes.
    void refused();
    /// Now, not a second later.
    void keepNow() { write(); }
    /// An open cell goes into a draft of its own, on offer, and is not written to the database.
    void keepOpenCell();

    /// Whether each box of the draft shows what its text once replaced, or that text itself.
    bool fits(const Draft& draft) const;
    /// What all boxes show, as typed and as replaced alike.
    std::vector<DraftField> shown() const { return m_boxes.shown(); }
    /// What is typed into boxes and into an open cell.
    std::vector<DraftField> typedTexts() const;
    /// A draft of these texts of the record on view, kept nowhere as yet.
    Draft draftOf(const std::vector<DraftField>& fields) const;
    /// Puts such a draft on offer.
    void offer(Draft draft);
    /// Types the draft into the boxes; from now on it is the draft of what stands there. A cell's text
    /// stays on offer in a draft of its own.
    void bringBack(const Draft& draft);

    void shownByProgram(const QString& control) {
        m_boxes.stillTyped({control, {}, {}, m_boxes.shown(control)});
    }
    /// Types the texts into their boxes. What was typed there is put on offer.
    void type(const std::vector<DraftField>& fields);

signals:
    void typedChanged();

private:
    void look();
    void write();
    void offer(const QString& id, const std::vector<DraftField>& fields);
    void put(const QString& id, const std::vector<DraftField>& fields, bool offered);
    void forget();

    const Context& m_context;
    TypedBoxes m_boxes;
    DraftStore* m_store = nullptr;
    DraftRecord m_record;             ///< whose values are in the boxes
    std::vector<DraftField> m_typed;  ///< in the boxes when a refill began
    QString m_id;                     ///< of the draft of what stands in the boxes, if there is one
    QTimer m_look, m_write;
    bool m_wasTyped = false;
};

}  // namespace sorvanto
