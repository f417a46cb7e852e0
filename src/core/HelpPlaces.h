// Which place of the manual tells of which window, screen or part of one.
#pragma once

#include <QString>
#include <span>

class QWidget;

namespace sorvanto {

struct HelpPlace {
    const char* name;   ///< of an object or of its class
    const char* place;  ///< "labels.md", "README.md#the-log"
};

std::span<const HelpPlace> helpPlaces();

/// The place of the widget or of the nearest that it lies in, beyond its window's edge as well; empty where none of
/// them has one.
QString helpPlaceOf(const QWidget* widget);

}  // namespace sorvanto
