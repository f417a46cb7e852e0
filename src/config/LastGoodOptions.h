// The last options.xml that could be read, kept beside it as options.last-good.xml, and what is done with it when
// the file itself can't be read any more.
#pragma once

#include <QDateTime>
#include <QString>
#include <cstdint>

namespace sorvanto::lastGoodOptions {

/// To be called with an options.xml that was read or written; a copy that can't be kept changes nothing.
void keep(const QString& optionsPath);
/// When the kept file was written; invalid when there is none that can be read.
QDateTime kept();
/// The language that the kept file names; 0, English, where it can't tell.
std::int16_t language();
/// Puts the broken file aside as options.broken.xml, in the place of an older one. Throws permissionDenied.
void putAside(const QString& optionsPath);
/// Puts the broken file aside and the kept one in its place. Throws what writeFile throws.
void putBack(const QString& optionsPath);

}  // namespace sorvanto::lastGoodOptions
