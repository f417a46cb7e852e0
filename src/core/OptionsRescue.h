// The window about an options.xml that can't be read, with the ways out of it.
#pragma once

namespace sorvanto {

class clsOptions;

/// Does nothing when the options were read. The last good file is offered where there is one, new options in any
/// case; with neither the start goes on without options, and the file stays as it is.
void offerOptions(clsOptions& options);

}  // namespace sorvanto
