// Whether the formula of a batch has changed since the batch was logged: "Formula: 3 changes since", the way into its history.
// Counted is what that history then lists: each row of the formula or of its ingredients that was made, changed or deleted.
// Of a batch that is older than the history: "Formula: at least 3 changes since".
#pragma once

#include <QDateTime>
#include <QPushButton>
#include <QTimer>

namespace sorvanto {

class clsLog;
struct ChangeCount;
struct Context;

class RecipeChanges : public QPushButton {
    Q_OBJECT

public:
    explicit RecipeChanges(const Context& context, QWidget* parent = nullptr);
    /// Looked up a moment later, and only where it can be seen.
    void showFor(const clsLog& batch);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void look();
    static QString textOf(const ChangeCount& changes);
    void open() const;

    const Context& m_context;
    std::int16_t m_formula = 0;
    QString m_name;
    QDateTime m_moment;
    QTimer m_look;
};

}  // namespace sorvanto
