// The bands and tools of the command bar, in their stored order, with their stored English texts.
#pragma once

namespace platform {
class CommandBar;
}

namespace sorvanto {

/// Fills an empty bar. Done once, before anything looks for a band or a tool.
void buildCommandBands(platform::CommandBar& bar);

}  // namespace sorvanto
