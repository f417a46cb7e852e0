#include "core/Leftovers.h"

#include "platform/basic/Paths.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

void removeFrom(const QString& folder, const QRegularExpression& form) {
    QDir files(folder);
    for (const QString& name : files.entryList(QDir::Files | QDir::NoSymLinks)) {
        if (form.match(name).hasMatch())
            files.remove(name);
    }
}

}  // namespace

void removeLeftovers() {
    static const QRegularExpression beside(
        u"^(?:options(?:\\.last-good)?\\.xml|[A-Za-z]*Translation\\.xml)\\.\\w{6}\\z|\\.restored(?:\\.part)?(?:-journal)?\\z"_s);
    static const QRegularExpression journal(u"\\.xml\\.\\w{6}\\z"_s);
    const QString folder = platform::programFolder();
    removeFrom(folder, beside);
    removeFrom(folder + u"/mixes"_s, journal);
    removeFrom(folder + u"/mixes/closed"_s, journal);
}

}  // namespace sorvanto
