// The main window among screens that write down what is asked of them, so that orders can be read.
#pragma once

#include "TestProgram.h"
#include "core/DatabaseUpdater.h"
#include "core/frmMain.h"
#include "mixer/ctlSorvanto.h"
#include "platform/basic/RuntimeError.h"
#include "shared/BatchLog.h"
#include "shared/RecordScreen.h"
#include "shared/basMain.h"

#include <QLineEdit>
#include <QSet>

namespace core_test {

using namespace Qt::StringLiterals;

using namespace sorvanto;

/// Writes "name:what" to the trace. Its text boxes bear the number of the instance, so that a caption tells
/// which instance it was read from.
class StubScreen : public RecordScreen, public BatchLog {
public:
    StubScreen(QString name, QStringList& trace, int instance, const QStringList& boxes = {})
        : RecordScreen(basMain::context()), m_name(std::move(name)), m_trace(trace) {
        setObjectName(m_name);
        m_trace << m_name + ":create";
        for (const QString& box : boxes) {
            auto* edit = new QLineEdit(this);
            edit->setObjectName(box);
            edit->setText(u"%1 of %2"_s.arg(box).arg(instance));
        }
    }
    ~StubScreen() override { m_trace << m_name + ":drop"; }

    void Form_Load() override {
        m_trace << m_name + ":load";
        if (failsToLoad)
            throw platform::RuntimeError(5, "load failed");
    }
    using RecordScreen::Listener;
    void Listener(std::int16_t value) override {
        m_trace << u"%1:Listener %2"_s.arg(m_name).arg(value);
        RecordScreen::Listener(value);
    }
    std::int16_t closeForm() override {
        m_trace << m_name + ":closeForm";
        if (failsToClose)
            throw platform::RuntimeError(5, "close failed");
        return closeAnswer;
    }
    void m_frmMain_btnClick(const QString& toolName, const QString& searchText) override {
        m_trace << u"%1:btnClick %2 \"%3\""_s.arg(m_name, toolName, searchText);
        captionAtClick = basMain::Main ? static_cast<frmMain*>(basMain::Main)->windowTitle() : QString();
        if (onClick)
            onClick(toolName);
    }
    bool addLog(const platform::XmlDocumentPtr&, const platform::XmlDocumentPtr&) override { return true; }
    bool isLogged(const QString&) override { return false; }

    void actOn(QLatin1String tool) {
        m_tools.on({tool}, [] {});
    }

    std::int16_t closeAnswer = 0;
    bool failsToLoad = false, failsToClose = false;
    QString captionAtClick;
    std::function<void(const QString&)> onClick;

protected:
    void setMenuOptions() override { m_trace << m_name + ":setMenuOptions"; }

private:
    QString m_name;
    QStringList& m_trace;
};

/// An updater that does what the test says, and writes down what it was given.
class StubUpdater : public DatabaseUpdater {
public:
    explicit StubUpdater(QStringList& trace) : m_trace(trace) { m_trace << "updater:create"; }
    ~StubUpdater() override { m_trace << "updater:drop"; }
    void IdentifyStore(const QString& first, const QString& second, const QString& store,
                       const QString& phone, QVariant&) override {
        m_trace << u"updater:IdentifyStore \"%1\" \"%2\" \"%3\" \"%4\""_s.arg(first, second, store, phone);
    }
    void ApplyUpdates(const platform::ConnectionPtr& connection, const QString& path, QString& version,
                      bool& applied) override {
        m_trace << u"updater:ApplyUpdates open=%1 \"%2\" \"%3\""_s.arg(connection->state())
                       .arg(QString(path).replace(platform::programFolder(), "<folder>"), version);
        if (onApply)
            onApply(version, applied);
    }
    std::function<void(QString& version, bool& applied)> onApply;

private:
    QStringList& m_trace;
};

class MainWindowTest : public support::TestProgram {
protected:
    void TearDown() override {
        window.reset();
        TestProgram::TearDown();
    }

    /// Makes the window of the stubs; load() starts it.
    void make();
    void load() {
        make();
        window->Form_Load();
    }
    /// The trace since the last call, lines that begin with any of the words alone; all without words.
    QStringList taken(const QStringList& words = {});
    StubScreen& stub(int number) { return dynamic_cast<StubScreen&>(*window->screen(number)); }
    platform::Tool& tool(const QString& band, const QString& name) {
        return window->bar().band(band).tool(name);
    }
    void click(const QString& band, const QString& name) { window->ActiveBar_ToolClick(tool(band, name)); }

    QStringList trace;
    Parts parts = stubParts();
    std::function<void(StubUpdater&)> prepareUpdater;
    StubScreen* mixerScreen = nullptr;
    std::unique_ptr<frmMain> window;

private:
    Parts stubParts();
    std::array<int, screenCount> m_made{};
};

/// The option ShowPatients at zero.
class NoPatientsTest : public MainWindowTest {
protected:
    QByteArray optionsXml() const override {
        return MainWindowTest::optionsXml().replace("<ShowPatients>1<", "<ShowPatients>0<");
    }
};

}  // namespace core_test
