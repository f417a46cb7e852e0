// Announcing, and the files that were written.
#include "shared/Happening.h"

#include "platform/basic/Paths.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

void openOutside(const QString& path) {
    const QFileInfo file(path);
    if (!file.exists() || !QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath())))
        announce(translated(u"%1 can not be opened."_s).replace(u"%1"_s, file.fileName()));
}

}  // namespace

void announce(const Happening& happening) noexcept {
    guarded(u"basMain:announce"_s, [&] {
        if (basMain::announced)
            basMain::announced(happening);
    });
}

void announce(const QString& text) noexcept { announce(Happening{text, {}, false}); }

Happening fileHappening(const QString& text, const QString& path) {
    const QFileInfo file(platform::platformPath(path));
    const QString whole = file.absoluteFilePath();
    const QString folder = file.absolutePath();
    return {QString(text).replace(u"%1"_s, file.fileName()),
            {{translated(u"Open"_s), [whole] { openOutside(whole); }},
             {translated(u"Show in folder"_s), [folder] { openOutside(folder); }}},
            false};
}

void announceFile(const QString& text, const QString& path) noexcept {
    guarded(u"basMain:announce"_s, [&] { announce(fileHappening(text, path)); });
}

}  // namespace sorvanto
