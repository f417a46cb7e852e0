// A window with every widget of the program in its usual place, for pictures and for tests of the bar.
#pragma once

#include "platform/widgets/CommandBar.h"

#include <QMainWindow>

namespace support {

class SampleRows;

/// Bands and tools of a program of this kind: menus, record tools, screen buttons, two screens, a side panel.
void buildSampleBar(platform::CommandBar& bar);
/// A screen of boxes on a card, with tabs and a grid.
QWidget* sampleScreen(bool locked, bool german, const SampleRows& rows, QWidget* parent);
/// The widgets that the first screen has no place for: buttons, checks, step list, up-downs, refused input.
QWidget* sampleControls(QWidget* parent);
QWidget* samplePanel(QWidget* parent);

}  // namespace support
