// Where the mixing floor puts its dialog.
#include "records/SigningDialog.h"

namespace sorvanto {

std::function<std::unique_ptr<SigningDialog>()> makeSigningDialog;

}  // namespace sorvanto
