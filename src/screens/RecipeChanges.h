// Whether the formula of a batch has changed since the batch was logged: "Formula: 3 changes since", the way into its history.
// Counted is what that history then lists: each row of the formula or of its ingredients that was made, changed or deleted.
#pragma once

#include <QDateTime>
#include <QPushButton>
#include <QTimer>

namespace sorvanto {

class clsLog;
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
    void open() const;

    const Context& m_context;
    std::int16_t m_formula = 0;
    QString m_name;
    QDateTime m_moment;
    QTimer m_look;
};

}  // namespace sorvanto
