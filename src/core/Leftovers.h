// What writes that were killed have left beside the program.
#pragma once

namespace sorvanto {

/// Removes the temporary files of options, language files and journals, and of a copy that was being put back.
/// Only regular files whose names the program itself gives; to be called when no other program runs here.
void removeLeftovers();

}  // namespace sorvanto
