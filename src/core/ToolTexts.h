// The translated texts of the command bar.
#pragma once

namespace platform {
class CommandBar;
}

namespace sorvanto {

/// Looks up each text by itself, in a fixed order, and puts it where it is shown.
void translateTools(platform::CommandBar& bar);

}  // namespace sorvanto
