// The last options.xml that could be read, kept beside it as options.last-good.xml, and what is done with it when
// the file itself can't be read any more.
#pragma once

#include <QDateTime>
#include <QString>
#include <cstdint>

namespace platform {
class XmlDocument;
}

namespace sorvanto::lastGoodOptions {

/// To be called with an options.xml that was read or written, and what it holds; a copy that can't be kept changes
/// nothing. What holds no options is not kept: another file in their place is none of them; nor is a password in an address.
void keep(const QString& optionsPath, const platform::XmlDocument& content);
/// When the kept file was written; invalid when there is none that holds options.
QDateTime kept();
/// The language that the kept file names; 0, English, where it can't tell.
std::int16_t language();
/// Puts the broken file, if there is one, aside as options.broken.xml, in the place of an older one. Throws
/// permissionDenied.
void putAside(const QString& optionsPath);
/// Keeps the broken file, if there is one, as options.broken.xml and puts the kept one in its place: wherever the file
/// system can, there is an options.xml at every moment. Throws what writeFile throws.
void putBack(const QString& optionsPath);

}  // namespace sorvanto::lastGoodOptions
