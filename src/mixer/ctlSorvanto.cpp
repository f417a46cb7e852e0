// The mixer control: session, texts and panel put together behind the operations that the program knows.
#include "mixer/ctlSorvanto.h"

#include "mixer/MixSession.h"
#include "mixer/MixTables.h"
#include "mixer/MixerPanel.h"
#include "mixer/PanelTexts.h"

#include <QVBoxLayout>

namespace sorvanto {

class ctlSorvanto::Private {
public:
    explicit Private(MixerEnvironment environment) : session(std::move(environment)) {}

    PanelTexts texts;
    MixSession session;
    std::unique_ptr<MixerPanel> panel;
};

ctlSorvanto::ctlSorvanto(QWidget* parent) : ctlSorvanto(MixerEnvironment::real(), parent) {}

ctlSorvanto::ctlSorvanto(MixerEnvironment environment, QWidget* parent)
    : QWidget(parent), d(std::make_unique<Private>(std::move(environment))) {
    d->panel = std::make_unique<MixerPanel>(d->session, d->texts);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->panel.get());
    connect(&d->session, &MixSession::mixDone, this, &ctlSorvanto::mixDone);
    connect(&d->session, &MixSession::enableForm, this, &ctlSorvanto::enableForm);
}

ctlSorvanto::~ctlSorvanto() = default;

void ctlSorvanto::SetStoreInfo(const QString& storeName, const QString&, const QString&) {
    d->panel->setStoreName(storeName);
}

void ctlSorvanto::setTextSource(std::function<QString(const QString& english)> known) {
    d->texts.setSource(std::move(known));
}

void ctlSorvanto::setSettings(std::int16_t commPort, std::int16_t, std::int16_t overrideSpeed,
                              const QString& translationPath) {
    if (!d->texts.hasSource())
        d->texts.load(translationPath);
    d->session.setPort(commPort, overrideSpeed != 0);
    d->panel->refresh();
}

QStringList ctlSorvanto::MixTypes() const {
    QStringList names = mixTypeNames();
    for (QString& name : names)
        name = d->texts.shown(name);
    return names;
}

QStringList ctlSorvanto::JarSizes() const { return jarNames(); }
QStringList ctlSorvanto::MixTimes() const { return mixTimeTexts(); }

void ctlSorvanto::StartControl() { d->session.open(); }
void ctlSorvanto::loadFormula(const platform::XmlDocumentPtr& formula) { d->session.loadFormula(formula); }
void ctlSorvanto::mixerInitialsClosed() { d->session.initialsClosed(); }
void ctlSorvanto::CloseControl() { d->session.close(); }
void ctlSorvanto::mixLogged() { d->session.logged(); }

void ctlSorvanto::mixFormulaGone() { d->session.tellFormulaGone(); }
void ctlSorvanto::setDesk(Desk* desk) { d->session.setDesk(desk); }

std::optional<MixUnderWay> ctlSorvanto::mixUnderWay() const {
    const MixRun& run = d->session.run();
    if (run.running().isEmpty() || run.state() == RunState::Done || run.state() == RunState::Fault)
        return std::nullopt;
    using Course = MixUnderWay::Course;
    const bool seen = run.state() == RunState::Mixing || run.state() == RunState::Paused;
    const Course course = run.state() == RunState::Paused ? Course::Paused
                          : seen                          ? Course::Mixing
                                                          : Course::Unseen;
    const QString name = d->session.nameOf(run.running());
    return MixUnderWay{course, name.isEmpty() ? d->texts(PanelText::Unnamed) : name,
                       seen ? shortTime(run.status().secondsLeft) : QString(),
                       d->session.storedFormulaOf(run.running()), d->session.startOf(run.running())};
}

bool ctlSorvanto::hasUnloggedMix() const { return d->session.hasUnlogged(); }
std::optional<int> ctlSorvanto::formulaToMix() const { return d->session.formulaToMix(); }

void ctlSorvanto::setLoggedTest(std::function<bool(const QString& lot)> test) {
    d->session.setLoggedTest(std::move(test));
}

void ctlSorvanto::setLogBook(LogBook* book) { d->session.setLogBook(book); }
void ctlSorvanto::databaseOpened() { d->session.databaseOpened(); }

void ctlSorvanto::takeDown(const BatchRows& rows) { d->session.takeDown(rows); }
void ctlSorvanto::noteDeletion(const BatchRows& rows) { d->session.noteDeletion(rows); }
void ctlSorvanto::undoDeletion() { d->session.undoDeletion(); }
void ctlSorvanto::noteRestored(const BatchRows& rows) { d->session.noteRestored(rows); }

const Reconciliation& ctlSorvanto::reconciliation() const { return d->session.reconciliation(); }

void ctlSorvanto::setUnitSource(std::function<QString(int formulaID)> unitOf) {
    d->panel->setUnitSource(std::move(unitOf));
}

std::optional<protocol::Status> ctlSorvanto::reached() const { return d->session.reached(); }

}  // namespace sorvanto
