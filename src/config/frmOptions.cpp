// Boxes and options, in the fixed order in which they are read and written.
#include "config/frmOptions.h"

#include "config/LanguageHelp.h"
#include "config/clsOptions.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/serial/PortProbe.h"
#include "platform/widgets/OwnerWindow.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/Translator.h"
#include "ui_frmOptions.h"

#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int lastPort = 4;
/// Milliseconds: for what the print service knows, and between two looks for what it did not know then.
constexpr int atOnce = 40, laterTurn = 100;
constexpr std::int32_t invalidPropertyValue = 380;

const QStringList languages{u"English"_s, u"Espanol"_s,    u"Deutsch"_s,  u"Francais"_s,
                            u"Russian"_s, u"Portuguese"_s, u"Italiano"_s, u"Suisse"_s};

/// Leaves nothing chosen where no entry is the wanted one.
void fill(platform::ChoiceBox& box, const QStringList& entries, const QString& wanted) {
    box.clear();
    box.addItems(entries);
    box.setListIndex(static_cast<int>(entries.indexOf(wanted)));
}

/// Property of a box that shows what is stored.
constexpr const char* loaded = "loaded";

void setLoaded(QWidget& box) { box.setProperty(loaded, true); }

/// What could not be loaded is not saved, unless the user has filled the box himself.
bool isToBeStored(const QWidget& box, bool blank) { return box.property(loaded).toBool() || !blank; }

}  // namespace

frmOptions::frmOptions(Context& context, QWidget* parent)
    : QDialog(parent), m_context(context), m_ui(std::make_unique<Ui::frmOptions>()) {
    m_ui->setupUi(this);
    connect(m_ui->cmdDB, &QPushButton::clicked, this, &frmOptions::cmdDB_Click);
    connect(m_ui->cmdServer, &QPushButton::clicked, this, &frmOptions::cmdServer_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmOptions::cmdSave_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmOptions::cmdCancel_Click);
    Form_Load();
}

frmOptions::~frmOptions() = default;

clsOptions& frmOptions::options() const { return platform::deref(m_context.options); }

void frmOptions::edit(Context& context) {
    frmOptions form(context, platform::ownerWindow());
    platform::asker().showModal(form, [&] { form.exec(); });
}

void frmOptions::Form_Load() {
    guarded(u"frmOptions:Form_Load"_s, [&] {
        transalteForm();
        fill(*m_ui->cboLanguage, languages, QString());
        for (int index = 0; index < m_ui->cboLanguage->count(); ++index)
            m_ui->cboLanguage->setItemData(index, languageHelp[static_cast<std::size_t>(index)],
                                           Qt::ToolTipRole);
        ListComPorts();
        ListPrinters();
        ListCurrency();
        fillTexts();
        m_ui->cboPort->setBoxText(QString::number(options().CommPort()));
        setLoaded(*m_ui->cboPort);
        showLanguage(options().Language());
        setLoaded(*m_ui->cboLanguage);
        showLocation(options().DBLocation());
        m_ui->chkPatients->setChecked(options().ShowPatients() != 0);
        setLoaded(*m_ui->chkPatients);
        m_ui->chkOverSpeed->setChecked(options().OverrideSpeed() != 0);
        setLoaded(*m_ui->chkOverSpeed);
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
        sayWhatCounts();
        m_ui->cmdServer->setText(translated(u"Server…"_s));
    });
}

void frmOptions::sayWhatCounts() {
    m_ui->lblNextStart->setTextFormat(Qt::PlainText);
    m_ui->lblNextStart->setText(
        translated(u"Language, comm port and the patient screen change with the next start."_s));
    m_ui->lblNextStart->setMinimumHeight(2 * m_ui->lblNextStart->fontMetrics().lineSpacing() + 2);
    sayWhatIsOpen();
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
        if (m_printers.answered(atOnce))
            return fillPrinters(chosen);
        if (chosen != "0"_L1)  // what stands for none
            fill(*m_ui->cboPrinter, {chosen}, chosen);
        connect(&m_printersLater, &QTimer::timeout, this, &frmOptions::lookForPrinters);
        m_printersLater.start(laterTurn);
    });
}

void frmOptions::fillPrinters(const QString& chosen) {
    fill(*m_ui->cboPrinter, m_printers.names(), chosen);
    setLoaded(*m_ui->cboPrinter);
}

// What is stored is shown meanwhile, and stays stored if the answer does not come.
void frmOptions::lookForPrinters() {
    guarded(u"frmOptions:ListPrinters"_s, [&] {
        if (!m_printers.answered())
            return;
        m_printersLater.stop();
        fillPrinters(m_ui->cboPrinter->boxText());
    });
}

void frmOptions::ListCurrency() {
    guarded(u"frmOptions:ListCurrency"_s, [&] {
        const std::array<QString, 3> table{u"$"_s, u"\u20AC"_s, QString()};
        m_ui->cboCurrency->clear();
        const QString chosen = options().DefCurrency();
        fill(*m_ui->cboCurrency, {table[0], table[1]}, chosen);
        setLoaded(*m_ui->cboCurrency);
    });
}

void frmOptions::fillTexts() {
    const auto show = [](platform::TextBox& box, const QString& text) {
        box.setText(text);
        setLoaded(box);
    };
    show(*m_ui->txtAddress, options().Address());
    show(*m_ui->txtCity, options().City());
    show(*m_ui->txtDEA, options().DEA());
    show(*m_ui->txtFax, options().Fax());
    show(*m_ui->txtPhone, options().Phone());
    show(*m_ui->txtState, options().State());
    show(*m_ui->txtStoreName, options().StoreName());
    show(*m_ui->txtZip, options().Zip());
}

void frmOptions::showLanguage(std::int16_t language) {
    if (language < -1 || language >= m_ui->cboLanguage->count())
        throw platform::RuntimeError(invalidPropertyValue, u"Invalid property value"_s);
    m_ui->cboLanguage->setListIndex(language);
}

void frmOptions::storeTexts() const {
    using Getter = QString (clsOptions::*)() const;
    using Setter = void (clsOptions::*)(const QString&);
    const auto store = [this](Getter get, Setter set, const platform::TextBox& box) {
        // A missing element stops the saving all the same.
        (options().*set)(isToBeStored(box, box.text().isEmpty()) ? box.text() : (options().*get)());
    };
    store(&clsOptions::Address, &clsOptions::Address, *m_ui->txtAddress);
    store(&clsOptions::City, &clsOptions::City, *m_ui->txtCity);
    store(&clsOptions::DEA, &clsOptions::DEA, *m_ui->txtDEA);
    store(&clsOptions::Fax, &clsOptions::Fax, *m_ui->txtFax);
    store(&clsOptions::Phone, &clsOptions::Phone, *m_ui->txtPhone);
    store(&clsOptions::State, &clsOptions::State, *m_ui->txtState);
    store(&clsOptions::StoreName, &clsOptions::StoreName, *m_ui->txtStoreName);
    store(&clsOptions::Zip, &clsOptions::Zip, *m_ui->txtZip);
}

void frmOptions::storeChoices() const {
    if (isToBeStored(*m_ui->cboPort, m_ui->cboPort->boxText().isEmpty()))
        options().CommPort(platform::toInt16(platform::leadingNumber(m_ui->cboPort->boxText())));
    if (isToBeStored(*m_ui->cboLanguage, m_ui->cboLanguage->listIndex() < 0))
        options().Language(static_cast<std::int16_t>(m_ui->cboLanguage->listIndex()));
    if (m_ui->txtDB->property(fullLocation).isValid())
        options().DBLocation(m_ui->txtDB->property(fullLocation).toString());
    if (isToBeStored(*m_ui->chkPatients, !m_ui->chkPatients->isChecked()))
        options().ShowPatients(m_ui->chkPatients->isChecked() ? 1 : 0);
    if (isToBeStored(*m_ui->chkOverSpeed, !m_ui->chkOverSpeed->isChecked()))
        options().OverrideSpeed(m_ui->chkOverSpeed->isChecked() ? 1 : 0);
    if (isToBeStored(*m_ui->cboCurrency, m_ui->cboCurrency->boxText().isEmpty()))
        options().DefCurrency(m_ui->cboCurrency->boxText());
    if (isToBeStored(*m_ui->cboPrinter, m_ui->cboPrinter->boxText().isEmpty()))
        options().DefPrinter(m_ui->cboPrinter->boxText());
}

// -1 for none that can be read.
int frmOptions::storedLanguage() const {
    try {
        return options().Language();
    } catch (const platform::RuntimeError&) {
        return -1;
    }
}

void frmOptions::cmdSave_Click() {
    guarded(u"frmOptions:cmdSave_Click"_s, [&] {
        if (!mayStoreLocation())
            return;
        const int former = storedLanguage();
        storeTexts();
        storeChoices();
        options().saveOptions();
        accept();
        if (storedLanguage() != former)
            announce(translated(u"Language changes at the next start"_s));
    });
}

void frmOptions::cmdCancel_Click() {
    guarded(u"frmOptions:cmdCancel_Click"_s, [&] { reject(); });
}

}  // namespace sorvanto
