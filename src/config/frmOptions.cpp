// Boxes and options, in the fixed order in which they are read and written.
#include "config/frmOptions.h"

#include "config/Printers.h"
#include "config/clsOptions.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/serial/PortProbe.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "ui_frmOptions.h"

#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// How many characters of a path the box shows.
constexpr int pathLimit = 55;
constexpr int lastPort = 4;
constexpr std::int32_t invalidPropertyValue = 380;

/// Property of txtDB that holds the full path, which is what is saved.
constexpr const char* tag = "Tag";

const QStringList languages{u"English"_s, u"Espanol"_s,    u"Deutsch"_s,  u"Francais"_s,
                            u"Russian"_s, u"Portuguese"_s, u"Italiano"_s, u"Suisse"_s};

clsOptions& options() { return platform::deref(basMain::Options); }

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

/// Leaves nothing chosen where no entry is the wanted one.
void fill(platform::ChoiceBox& box, const QStringList& entries, const QString& wanted) {
    box.clear();
    box.addItems(entries);
    box.setListIndex(static_cast<int>(entries.indexOf(wanted)));
}

}  // namespace

frmOptions::frmOptions(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmOptions>()) {
    m_ui->setupUi(this);
    connect(m_ui->cmdDB, &QPushButton::clicked, this, &frmOptions::cmdDB_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmOptions::cmdSave_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmOptions::cmdCancel_Click);
    Form_Load();
}

frmOptions::~frmOptions() = default;

void frmOptions::edit() {
    frmOptions form(QApplication::activeWindow());
    platform::asker().showModal(form, [&] { form.exec(); });
}

void frmOptions::Form_Load() {
    guarded(u"frmOptions:Form_Load"_s, [&] {
        transalteForm();
        fill(*m_ui->cboLanguage, languages, QString());
        ListComPorts();
        ListPrinters();
        ListCurrency();
        fillTexts();
        m_ui->cboPort->setBoxText(QString::number(options().CommPort()));
        showLanguage(options().Language());
        const QString path = options().DBLocation();
        m_ui->txtDB->setText(ShortenString(path, pathLimit));
        m_ui->txtDB->setProperty(tag, path);
        m_ui->txtDB->setToolTip(path);
        m_ui->chkPatients->setChecked(options().ShowPatients() != 0);
        m_ui->chkOverSpeed->setChecked(options().OverrideSpeed() != 0);
    });
}

void frmOptions::transalteForm() {
    guarded(u"frmOptions:transalteForm"_s, [&] {
        setWindowTitle(translated(u"Options"_s));
        m_ui->fraPharmacy->setTitle(translated(u"Company Options"_s));
        m_ui->fraSorvanto->setTitle(translated(u"Sorvanto Options"_s));
        m_ui->fraDB->setTitle(translated(u"Data Location"_s));
        m_ui->lblAddress->setText(translated(u"Address"_s));
        m_ui->lblCity->setText(translated(u"City"_s));
        m_ui->lblFax->setText(translated(u"Fax"_s));
        m_ui->lblPhone->setText(translated(u"Phone"_s));
        m_ui->lblState->setText(translated(u"State"_s));
        m_ui->lblStoreName->setText(translated(u"Company Name"_s));
        m_ui->lblZip->setText(translated(u"Postal Code"_s));
        m_ui->lblLanguage->setText(translated(u"Language"_s));
        m_ui->lblPort->setText(translated(u"Comm Port"_s));
        m_ui->chkPatients->setText(translated(u"Show Patients"_s));
        m_ui->chkOverSpeed->setText(translated(u"Override Speed Recommendations"_s));
        m_ui->txtDB->setAccessibleName(m_ui->fraDB->title());
        m_ui->cmdDB->setAccessibleName(m_ui->fraDB->title());
        m_ui->cboPrinter->setAccessibleName(m_ui->fraPrinter->title());
    });
}

void frmOptions::ListComPorts() {
    guarded(u"frmOptions:ListComPorts"_s, [&] {
        QStringList present;
        for (int port = 1; port <= lastPort; ++port) {
            if (platform::portPresent(port))
                present << QString::number(port);
        }
        fill(*m_ui->cboPort, present, QString());
    });
}

void frmOptions::ListPrinters() {
    guarded(u"frmOptions:ListPrinters"_s, [&] {
        m_ui->cboPrinter->clear();
        const QString chosen = options().DefPrinter();
        fill(*m_ui->cboPrinter, printerNames(), chosen);
    });
}

void frmOptions::ListCurrency() {
    guarded(u"frmOptions:ListCurrency"_s, [&] {
        const std::array<QString, 3> table{u"$"_s, u"\u20AC"_s, QString()};
        m_ui->cboCurrency->clear();
        const QString chosen = options().DefCurrency();
        fill(*m_ui->cboCurrency, {table[0], table[1]}, chosen);
    });
}

void frmOptions::fillTexts() {
    m_ui->txtAddress->setText(options().Address());
    m_ui->txtCity->setText(options().City());
    m_ui->txtDEA->setText(options().DEA());
    m_ui->txtFax->setText(options().Fax());
    m_ui->txtPhone->setText(options().Phone());
    m_ui->txtState->setText(options().State());
    m_ui->txtStoreName->setText(options().StoreName());
    m_ui->txtZip->setText(options().Zip());
}

void frmOptions::showLanguage(std::int16_t language) {
    if (language < -1 || language >= m_ui->cboLanguage->count())
        throw platform::RuntimeError(invalidPropertyValue, u"Invalid property value"_s);
    m_ui->cboLanguage->setListIndex(language);
}

QString frmOptions::ShortenString(const QString& text, int limit) {
    QString result;
    const ResumeNext step(u"frmOptions:ShortenString"_s);
    step([&] { result = shortened(text, limit); });
    return result;
}

void frmOptions::cmdDB_Click() {
    guarded(u"frmOptions:cmdDB_Click"_s, [&] {
        const QString path = platform::asker().openFile(QString(), u"Sorvanto Data|Sorvanto.mdb"_s);
        m_ui->txtDB->setText(path);
        m_ui->txtDB->setProperty(tag, path);
    });
}

void frmOptions::storeTexts() const {
    options().Address(m_ui->txtAddress->text());
    options().City(m_ui->txtCity->text());
    options().DEA(m_ui->txtDEA->text());
    options().Fax(m_ui->txtFax->text());
    options().Phone(m_ui->txtPhone->text());
    options().State(m_ui->txtState->text());
    options().StoreName(m_ui->txtStoreName->text());
    options().Zip(m_ui->txtZip->text());
}

void frmOptions::cmdSave_Click() {
    guarded(u"frmOptions:cmdSave_Click"_s, [&] {
        storeTexts();
        options().CommPort(platform::toInt16(platform::leadingNumber(m_ui->cboPort->boxText())));
        options().Language(static_cast<std::int16_t>(m_ui->cboLanguage->listIndex()));
        options().DBLocation(m_ui->txtDB->property(tag).toString());
        options().ShowPatients(m_ui->chkPatients->isChecked() ? 1 : 0);
        options().OverrideSpeed(m_ui->chkOverSpeed->isChecked() ? 1 : 0);
        options().DefCurrency(m_ui->cboCurrency->boxText());
        options().DefPrinter(m_ui->cboPrinter->boxText());
        options().saveOptions();
        accept();
    });
}

void frmOptions::cmdCancel_Click() {
    guarded(u"frmOptions:cmdCancel_Click"_s, [&] { reject(); });
}

}  // namespace sorvanto
