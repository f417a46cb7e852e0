// Texts compared byte for byte with files below tests/golden. With SORVANTO_UPDATE_GOLDEN=1 in the
// environment the files are written anew instead; look at the difference before keeping it.
#pragma once

#include <QString>

namespace support {

/// expectGolden("records/add_formula.txt", text)
void expectGolden(const QString& name, const QString& text);

}  // namespace support
