// The windows about an options.xml that is gone or can't be read, with the ways out of it.
#pragma once

namespace sorvanto {

class clsOptions;
struct Context;

/// When options.xml is gone and the last good file is there: offers to put that in its place. Declined, or where there
/// is none, the start makes new options as ever.
void bringOptionsBack(Context& context);

/// Does nothing when the options were read. The last good file is offered where there is one, new options in any
/// case; with neither the start goes on without options, and the file stays as it is.
void offerOptions(Context& context, clsOptions& options);

}  // namespace sorvanto
