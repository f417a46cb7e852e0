// The width of the widest of many texts. To lay a text out takes long, so only those are laid out that may be it.
#pragma once

#include <QFontMetrics>
#include <QStringList>

namespace sorvanto {

/// In pixels; 0 without texts.
int widestText(const QStringList& texts, const QFontMetrics& metrics);

}  // namespace sorvanto
