// A timer looks for modal windows, as their event loops run inside the calls that opened them.
#include "DeskTest.h"

#include "mixer/ctlSorvanto.h"
#include "mixing/frmSorvanto.h"
#include "platform/widgets/Boxes.h"

#include <QApplication>
#include <QLabel>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

namespace {

QString nameOf(const QWidget& window) {
    return window.objectName().isEmpty()
               ? QString::fromLatin1(window.metaObject()->className()).section(u"::"_s, -1)
               : window.objectName();
}

QString textsOf(const QWidget& window) {
    QString said;
    for (const QLabel* label : window.findChildren<QLabel*>())
        said += label->text() + '\n'_L1;
    return said;
}

}  // namespace

void DeskTest::SetUp() {
    ScreenTest::SetUp();
    platform::setAsker(&m_asker);
    Parts parts = realParts(context);
    parts.mixerScreen = [this] { return std::make_unique<frmSorvanto>(context, line.environment()); };
    parts.serverLook = [this](ServerLook::Ways ways) {
        serverWays = std::move(ways);
        return std::unique_ptr<ServerLook>();
    };
    load(parts);
    m_asker.setParent(window.get());
    QObject::connect(&m_looking, &QTimer::timeout, &m_looking, [this] { look(); });
    m_looking.setSingleShot(true);  // a repeating one stands still while its own slot runs
    m_looking.start(1);
}

void DeskTest::TearDown() {
    m_looking.stop();
    EXPECT_TRUE(m_expected.isEmpty()) << "never on show: " << str(m_expected.value(0).name);
    platform::setAsker(&asker);
    ScreenTest::TearDown();
}

QWidget* DeskTest::modalOnShow() { return QApplication::activeModalWidget(); }

void DeskTest::look() {
    m_looking.start(1);
    QWidget* modal = modalOnShow();
    if (!modal || !modal->isVisible() || modal == m_seen)
        return;
    const QPointer<QWidget> outer = m_seen;
    m_seen = modal;
    shown << nameOf(*modal);
    if (m_expected.isEmpty() || m_expected.first().name != shown.last()) {
        ADD_FAILURE() << "Not expected: " << str(shown.last()) << str(textsOf(*modal));
        modal->close();
        return;
    }
    const Expected next = m_expected.takeFirst();
    const QPointer<QWidget> alive(modal);
    next.script(*modal);
    m_seen = outer;
    if (alive && alive->isVisible()) {
        ADD_FAILURE() << "left open: " << str(next.name);
        alive->hide();
    }
}

void DeskTest::seed() {
    seedLogs();
    sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (1, 'Ann', 'Lee');"
        "INSERT INTO RXs (RXsID, PatientID, LogID, rxs_QTY) VALUES (1, 1, 2, 3)");
}

void DeskTest::whileOpen(const QString& name, std::function<void(QWidget&)> script) {
    m_expected.append({name, std::move(script)});
}

void DeskTest::answer(const char* button, const QString& text) {
    whileOpen(u"AskDialog"_s, [button, text](QWidget& box) {
        EXPECT_TRUE(textsOf(box).contains(text)) << str(textsOf(box));
        child<QPushButton>(box, button)->click();
    });
}

void DeskTest::sign(const QString& initials, const QString& verified) {
    whileOpen(u"frmInitials"_s, [initials, verified](QWidget& form) {
        child<platform::TextBox>(form, "txtInitials")->setText(initials);
        child<platform::TextBox>(form, "txtVerified")->setText(verified);
        child<QPushButton>(form, "cmdOK")->click();
    });
}

void DeskTest::cancelSigning() {
    whileOpen(u"frmInitials"_s, [](QWidget& form) { child<QPushButton>(form, "cmdCancel")->click(); });
}

void DeskTest::loadMix(const QString& name, int formulaID) {
    const QString xml = test::formulaDocument(test::shortMix, 9, 3, 20, name)->xml();
    QString changed = xml;
    changed.replace(QRegularExpression(u"<ID>[^<]*</ID>"_s), u"<ID>%1</ID>"_s.arg(formulaID));
    ASSERT_TRUE(changed.contains(u"<ID>%1</ID>"_s.arg(formulaID))) << str(xml);
    window->mixer().loadFormula(document(changed));
    ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerStart")->isEnabled(); }));
}

void DeskTest::startMix(const QString& name, int formulaID) {
    ASSERT_NO_FATAL_FAILURE(loadMix(name, formulaID));
    panelButton("mixerStart")->click();
    ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerStop")->isVisible(); }));
}

void DeskTest::endMix() {
    line.run(20'000);
    ASSERT_TRUE(test::waitFor([&] { return waits() || !panelButton("mixerStop")->isVisible(); }));
    ASSERT_TRUE(test::waitFor([&] { return waits() || shown.contains(u"frmInitials"_s); }));
}

QPushButton* DeskTest::panelButton(const char* name) const {
    return child<QPushButton>(window->mixer(), name);
}

QStringList DeskTest::offers() const {
    QStringList texts;
    for (const QLabel* label : window->mixer().findChildren<QLabel*>(u"mixerOffer"_s)) {
        if (label->isVisible())
            texts << label->text();
    }
    return texts;
}
