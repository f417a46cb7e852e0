// A dialog in the manner of the system's forms: showing it modally lasts until it is hidden, and the
// close box means what the form says it means.
#pragma once

#include <QDialog>

namespace platform {

class ModalForm : public QDialog {
    Q_OBJECT
public:
    explicit ModalForm(QWidget* parent = nullptr);

    /// Runs until the form is hidden, through the asker in force.
    void showModal();
    /// The close box and Esc come here.
    void reject() override;

protected:
    /// What the close box does; the form is hidden unless it says otherwise.
    virtual void onCloseBox() { hide(); }
    /// Called when the form has come on show: the place to set focus and selection.
    virtual void onActivate() {}
    void showEvent(QShowEvent* event) override;
};

}  // namespace platform
