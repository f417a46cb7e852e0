#include "config/ServerDialog.h"

#include "config/ServerTexts.h"
#include "platform/ask/Ask.h"
#include "platform/data/postgres/Address.h"
#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Theme.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::grid;
using platform::postgres::AddressParts;
using platform::postgres::Trial;
using platform::postgres::TrialEnd;

constexpr int longestTrial = 10, millisecondsInSecond = 1000;
constexpr int turn = 40;  // milliseconds between two looks at a trial
constexpr int boxWidth = 44 * grid, highestPort = 65535;

AddressParts usualParts() { return {{}, u"5432"_s, u"sorvanto"_s, u"bench"_s, {}, {}}; }

bool isPort(const QString& text) {
    bool isNumber = text.isEmpty();  // the usual one
    const int port = isNumber ? 1 : text.toInt(&isNumber);
    return isNumber && port >= 1 && port <= highestPort;
}

/// One for all of the computers, or one for each.
bool arePorts(const QString& ports, const QString& computers) {
    const QStringList each = ports.split(u',');
    const bool fits = each.size() == 1 || each.size() == computers.split(u',').size();
    return fits && std::all_of(each.begin(), each.end(), isPort);
}

QLabel* text(const QString& words, const char* look, QWidget* parent) {
    auto* made = new QLabel(words, parent);
    made->setTextFormat(Qt::PlainText);
    made->setWordWrap(true);
    if (look)
        platform::setLook(*made, look);
    return made;
}

}  // namespace

ServerDialog::ServerDialog(const QString& location, QWidget* parent)
    : QDialog(parent), m_choose(new QPushButton(u"..."_s, this)),
      m_try(new QPushButton(translated(u"Try"_s), this)), m_ok(new QPushButton(translated(u"OK"_s), this)),
      m_cancel(new QPushButton(translated(u"Cancel"_s), this)), m_result(text({}, nullptr, this)),
      m_wait(new QProgressBar(this)) {
    setObjectName(u"ServerDialog"_s);
    setWindowTitle(translated(u"Server"_s));
    buildWindow();
    const QString address = location.trimmed();
    const bool isServer = platform::postgres::isAddress(address) && locationRefused(address).isEmpty();
    fill(isServer ? platform::postgres::partsOf(address) : usualParts());
    for (platform::TextBox* box : {m_computer, m_port, m_database, m_account, m_certificate})
        connect(box, &QLineEdit::textChanged, this, &ServerDialog::heardTyping);
    connect(m_computer, &QLineEdit::textChanged, this, &ServerDialog::takeApart);
    connect(m_choose, &QPushButton::clicked, this, &ServerDialog::chooseCertificate);
    connect(m_try, &QPushButton::clicked, this, &ServerDialog::tryOut);
    connect(m_ok, &QPushButton::clicked, this, &ServerDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &ServerDialog::reject);
    connect(&m_turn, &QTimer::timeout, this, &ServerDialog::lookForEnd);
    QWidget* last = m_certificate;
    for (QPushButton* button : {m_choose, m_try, m_ok, m_cancel}) {
        setTabOrder(last, button);
        last = button;
    }
    m_computer->setFocus();
    showState();
}

ServerDialog::~ServerDialog() = default;

platform::TextBox* ServerDialog::addBox(QGridLayout& boxes, const QString& caption, const QString& name) {
    const int row = boxes.rowCount();
    auto* label = new QLabel(caption, this);
    platform::makeFieldLabel(*label);
    auto* box = new platform::TextBox(this);
    box->setObjectName(name);
    box->setAccessibleName(caption);
    label->setBuddy(box);
    boxes.addWidget(label, row, 0);
    boxes.addWidget(box, row, 1);
    return box;
}

QGridLayout* ServerDialog::buildBoxes() {
    auto* boxes = new QGridLayout;
    boxes->setHorizontalSpacing(2 * grid);
    boxes->setVerticalSpacing(grid);
    boxes->setColumnStretch(1, 1);
    m_computer = addBox(*boxes, translated(u"Computer"_s), u"txtComputer"_s);
    m_port = addBox(*boxes, translated(u"Port"_s), u"txtPort"_s);
    m_database = addBox(*boxes, translated(u"Database"_s), u"txtDatabase"_s);
    m_account = addBox(*boxes, translated(u"Account"_s), u"txtAccount"_s);
    m_certificate = addBox(*boxes, translated(u"Certificate"_s), u"txtCertificate"_s);
    m_computer->setMinimumWidth(boxWidth);
    m_certificate->setPlaceholderText(u"~/.postgresql/root.crt"_s);
    m_choose->setObjectName(u"cmdCertificate"_s);
    m_choose->setAccessibleName(m_certificate->accessibleName());
    boxes->addWidget(m_choose, boxes->rowCount() - 1, 2);
    return boxes;
}

void ServerDialog::buildWindow() {
    m_result->setObjectName(u"lblResult"_s);
    m_result->setMinimumHeight(3 * m_result->fontMetrics().lineSpacing());
    m_result->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    m_wait->setObjectName(u"prgWait"_s);
    m_wait->setRange(0, 0);
    m_wait->setTextVisible(false);
    m_try->setObjectName(u"cmdTry"_s);
    m_ok->setObjectName(u"cmdOK"_s);
    m_cancel->setObjectName(u"cmdCancel"_s);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(grid);
    buttons->addWidget(m_wait, 1);
    buttons->addStretch(0);
    for (QPushButton* button : {m_try, m_ok, m_cancel}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    m_choose->setAutoDefault(false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    column->setSpacing(2 * grid);
    column->addWidget(text(
        translated(u"Records that several benches share lie on a server. Who has set it up knows these."_s),
        "quiet", this));
    column->addLayout(buildBoxes());
    column->addWidget(text(
        translated(u"The password is not typed here: a line in the file .pgpass in your home folder holds "
                   "it, for you alone to read."_s),
        "quiet", this));
    column->addWidget(m_result);
    column->addLayout(buttons);
}

// What no box shows comes first: each box that is filled asks whether the address is whole.
void ServerDialog::fill(const AddressParts& parts) {
    m_others = parts.others;
    m_computer->setText(parts.computer);
    m_port->setText(parts.port);
    m_database->setText(parts.database);
    m_account->setText(parts.account);
    m_certificate->setText(parts.certificate);
}

QString ServerDialog::address() const { return platform::postgres::addressOf(typed()); }

AddressParts ServerDialog::typed() const {
    return {m_computer->text().trimmed(), m_port->text().trimmed(),        m_database->text().trimmed(),
            m_account->text().trimmed(),  m_certificate->text().trimmed(), m_others};
}

QString ServerDialog::problem() const {
    const AddressParts parts = typed();
    if (platform::postgres::isAddress(parts.computer))
        return locationRefused(parts.computer);
    static const QRegularExpression name(u"^(/.*|[\\w.,:-]*)$"_s,
                                         QRegularExpression::UseUnicodePropertiesOption);
    if (!name.match(parts.computer).hasMatch())
        return translated(u"This is not the name of a computer."_s);
    if (!arePorts(parts.port, parts.computer))
        return translated(u"A port is a number from 1 to 65535."_s);
    return {};
}

void ServerDialog::heardTyping() {
    const QString wrong = problem();
    m_works = false;
    say(wrong, !wrong.isEmpty());
    showState();
}

// A whole address that was put into the first box.
void ServerDialog::takeApart() {
    const QString address = m_computer->text().trimmed();
    if (!platform::postgres::isAddress(address) || !locationRefused(address).isEmpty())
        return;
    const AddressParts parts = platform::postgres::partsOf(address);
    if (!parts.computer.isEmpty() || !parts.others.isEmpty())
        fill(parts);
}

void ServerDialog::chooseCertificate() {
    guarded(u"ServerDialog:chooseCertificate"_s, [&] {
        const QString file =
            platform::asker().openFile(QString(), translated(u"Certificate"_s) + u"|*.crt"_s);
        if (!file.isEmpty())
            m_certificate->setText(file);
    });
}

void ServerDialog::tryOut() {
    guarded(u"ServerDialog:tryOut"_s, [&] {
        if (m_trial)
            return m_trial->stop();
        m_works = false;
        m_trial = std::make_unique<Trial>(address(), longestTrial * millisecondsInSecond);
        say(translated(u"Asking the server…"_s), false);
        m_turn.start(turn);
        showState();
    });
}

void ServerDialog::lookForEnd() {
    if (!m_trial || !m_trial->ended())
        return;
    m_turn.stop();
    const TrialEnd end = m_trial->end();
    m_trial.reset();
    m_works = end == TrialEnd::Works;
    say(trialText(end, longestTrial), !m_works);
    showState();
    (m_works ? m_ok : m_try)->setFocus();
}

void ServerDialog::done(int result) {
    m_turn.stop();
    m_trial.reset();
    QDialog::done(result);
}

void ServerDialog::say(const QString& text, bool isWarning) {
    platform::setLook(*m_result, "caution", isWarning);
    m_result->setText(text);
    m_result->setAccessibleName(text);
}

void ServerDialog::showState() {
    const bool waits = m_trial != nullptr;
    const bool isWhole =
        problem().isEmpty() && (!m_computer->text().trimmed().isEmpty() || !m_others.isEmpty());
    for (QWidget* box :
         std::initializer_list<QWidget*>{m_computer, m_port, m_database, m_account, m_certificate, m_choose})
        box->setEnabled(!waits);
    m_wait->setVisible(waits);
    m_try->setText(waits ? translated(u"Stop"_s) : translated(u"Try"_s));
    m_try->setEnabled(waits || isWhole);
    m_ok->setEnabled(!waits && isWhole);
    (m_works ? m_ok : m_try)->setDefault(true);
    platform::setLook(*m_try, "primary", !m_works);
    platform::setLook(*m_ok, "primary", m_works);
    platform::giveAccessKeys(*this);
}

}  // namespace sorvanto
