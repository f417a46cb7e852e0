// Where the records are: a file or a server, shown, chosen, and a server refused.
#include "config/ServerDialog.h"
#include "config/ServerTexts.h"
#include "config/frmOptions.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DataLocation.h"
#include "platform/widgets/Theme.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/databaseInUse.h"
#include "ui_frmOptions.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::DataLocation;

namespace {

/// How many characters of a path the box shows.
constexpr int pathLimit = 55;

QString firstCharacters(const QString& text, int count) {
    if (count < 0)
        throw platform::RuntimeError(platform::error::invalidProcedureCall,
                                     u"Invalid procedure call or argument"_s);
    return text.left(count);
}

QString shortened(const QString& text, int limit) {
    const auto length = static_cast<int>(text.size());
    if (length <= limit)
        return text;
    const QString dots = u"..."_s;
    const auto separator = static_cast<int>(qMax(text.lastIndexOf('\\'_L1), text.lastIndexOf('/'_L1)));
    if (separator < 0)
        return firstCharacters(text, limit / 2 - 3) + dots + text.right(limit / 2);
    const int nameLength = length - separator - 1;
    return firstCharacters(text, limit - nameLength - 3) + dots + text.right(nameLength + 1);
}

/// What is open, as short as it may be.
QString openNow(const QString& open) {
    if (DataLocation::namesServer(open))
        return shortLocation(open);
    return open.size() > pathLimit ? u"\u2026"_s + open.right(pathLimit) : open;
}

}  // namespace

QString frmOptions::ShortenString(const QString& text, int limit) {
    QString result;
    const ResumeNext step(u"frmOptions:ShortenString"_s);
    step([&] { result = shortened(text, limit); });
    return result;
}

void frmOptions::sayWhatIsOpen() {
    const QString whole = databaseOpen(m_context);
    const QString open = openNow(whole);
    m_ui->lblOpenDB->setTextFormat(Qt::PlainText);
    m_ui->lblOpenDB->setText(
        open.isEmpty() ? translated(u"No database is open. The one chosen here is opened at once."_s)
                       : translated(u"Open now: %1. Another one is opened at the next start."_s).arg(open));
    m_ui->lblOpenDB->setToolTip(shownLocation(whole));
}

// The end of an address tells less than its beginning.
void frmOptions::showLocation(const QString& location) {
    const QString shown = shownLocation(location);
    m_ui->txtDB->setText(DataLocation::namesServer(shown) ? shown : ShortenString(shown, pathLimit));
    m_ui->txtDB->setCursorPosition(0);
    m_ui->txtDB->setProperty(fullLocation, location);
    m_ui->txtDB->setToolTip(shown);
}

bool frmOptions::mayStoreLocation() const {
    const QString refused = locationRefused(m_ui->txtDB->property(fullLocation).toString());
    if (refused.isEmpty())
        return true;
    platform::setLook(*m_ui->lblOpenDB, "quiet", false);
    platform::setLook(*m_ui->lblOpenDB, "caution");
    m_ui->lblOpenDB->setText(refused);
    m_ui->cmdDB->setFocus();
    return false;
}

void frmOptions::cmdDB_Click() {
    guarded(u"frmOptions:cmdDB_Click"_s, [&] {
        const QString path = platform::asker().openFile(QString(), u"Sorvanto Data|Sorvanto.mdb"_s);
        m_ui->txtDB->setText(path);
        m_ui->txtDB->setProperty(fullLocation, path);
    });
}

void frmOptions::cmdServer_Click() {
    guarded(u"frmOptions:cmdServer_Click"_s, [&] {
        ServerDialog dialog(m_ui->txtDB->property(fullLocation).toString(), this);
        platform::asker().showModal(dialog, [&] { dialog.exec(); });
        if (dialog.result() == QDialog::Accepted)
            showLocation(dialog.address());
    });
}

}  // namespace sorvanto
