// QDialog leaves its modal loop when it is hidden; Esc and the close box are led to one place.
#include "platform/widgets/ModalForm.h"

#include "platform/ask/Ask.h"
#include "platform/widgets/OwnerWindow.h"

namespace platform {

ModalForm::ModalForm(QWidget* parent) : QDialog(parent) {}

void ModalForm::showModal() {
    if (QWidget* owner = ownerWindow(); owner && owner != this && !parentWidget())
        setParent(owner, windowFlags());
    asker().showModal(*this, [this] { exec(); });
}

void ModalForm::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    onActivate();
}

void ModalForm::reject() { onCloseBox(); }

}  // namespace platform
