// Where the mixing layer puts its dialog.
#include "records/SigningDialog.h"

namespace sorvanto {

std::function<std::unique_ptr<SigningDialog>()> makeSigningDialog;

}  // namespace sorvanto
